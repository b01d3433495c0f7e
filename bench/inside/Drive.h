#pragma once

#include "inside/Heartbeat.h"
#include "inside/Spy.h"
#include "session/forms/Program.h"

#include <QStringList>

#include <functional>
#include <memory>

// Drives the whole program from within and prints what each step cost, a name and a number a line: `_wall`
// and `_cpu` in ms for the whole step, `_away` for the longest time for which the event loop was away,
// `_away_cpu` for the CPU time in it.
class Drive
{
public:
    // The number of contacts that the account has, and the steps that follow the sign-in; all when none is
    // named.
    Drive(int contacts, const QStringList& steps);

    void run();

private:
    bool isWanted(const char* step) const;
    void signIn();
    void floodOfPresences();
    void floodOfMessages();
    void pushes();
    void hostile(const char* kind);
    void longLog();
    void crowd();
    void search();
    void latency();
    void step(const char* name, const std::function<void()>& begin, const std::function<bool()>& done);
    void await(const std::function<bool()>& done);
    void rest();
    void order(const QString& text);
    bool isTreeFull();

    const int contacts_;
    const QStringList steps_;
    Program program_;
    std::unique_ptr<Spy> spy_;
    Heartbeat heart_;
};
