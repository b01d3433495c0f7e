#pragma once

#include <QtGlobal>

// A time-out on a clock whose origin isn't known: it starts with the first look at it.
class Deadline
{
public:
    bool hasPassed(qint64 nowMs)
    {
        if (at_ < 0)
            at_ = nowMs + patienceMs;
        return nowMs >= at_;
    }

private:
    // How long a person should have to wait for a server that says nothing.
    static constexpr qint64 patienceMs = 10'000;
    qint64 at_ = -1;
};
