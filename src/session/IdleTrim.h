#pragma once

#include <QElapsedTimer>

// Gives the memory that a flood or a big list left free back to the system, once things are quiet again.
class IdleTrim
{
public:
    // To be called once a tick, with the number of things that were worked through in it.
    void tick(int worked);

private:
    void giveBack();

    int worked_ = 0;
    QElapsedTimer quiet_; // since the last thing
};
