#pragma once

#include <QElapsedTimer>
#include <QTimer>

// Feels how long the event loop is away from its other work: the longest time between two of its beats.
class Heartbeat
{
public:
    Heartbeat();

    void reset();
    double longestMs() const { return longestMs_; }
    // The CPU time that the thread used in the longest stretch of it: what a machine that does nothing else
    // would have waited.
    double longestCpuMs() const { return longestCpuMs_; }

private:
    void beat();

    QTimer timer_;
    QElapsedTimer clock_;
    double cpuMs_ = 0;
    double longestMs_ = 0;
    double longestCpuMs_ = 0;
};
