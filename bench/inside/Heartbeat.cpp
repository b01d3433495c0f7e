#include "inside/Heartbeat.h"

#include <algorithm>
#include <chrono>
#include <ctime>

using namespace std::chrono_literals;

namespace
{

double threadCpuMs()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

} // namespace

Heartbeat::Heartbeat()
{
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setInterval(5ms);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { beat(); });
    timer_.start();
    reset();
}

void Heartbeat::reset()
{
    clock_.start();
    cpuMs_ = threadCpuMs();
    longestMs_ = 0;
    longestCpuMs_ = 0;
}

void Heartbeat::beat()
{
    longestMs_ = std::max(longestMs_, double(clock_.nsecsElapsed()) / 1e6);
    clock_.start();
    const double cpu = threadCpuMs();
    longestCpuMs_ = std::max(longestCpuMs_, cpu - cpuMs_);
    cpuMs_ = cpu;
}
