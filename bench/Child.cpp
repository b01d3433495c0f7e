#include "Child.h"

#include <QFile>
#include <QThread>

#include <ctime>
#include <stdexcept>

namespace
{

constexpr int windowMs = 800;    // so long it must rest
constexpr double restCpuMs = 25; // and this is rest: timers go on

} // namespace

Child::Child(const QString& program, const QStringList& arguments, const QProcessEnvironment& environment)
{
    process_.setProcessEnvironment(environment);
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    clock_.start();
    process_.start(program, arguments);
    if (!process_.waitForStarted())
        throw std::runtime_error("can't start " + program.toStdString());
}

Child::~Child()
{
    process_.kill();
    process_.waitForFinished();
}

double Child::wallMs() const
{
    return double(clock_.nsecsElapsed()) / 1e6;
}

double Child::cpuMs() const
{
    clockid_t clock{};
    timespec time{};
    if (clock_getcpuclockid(pid_t(process_.processId()), &clock) != 0 || clock_gettime(clock, &time) != 0)
        throw std::runtime_error("a measured process has ended");
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

Memory Child::memory() const
{
    QFile file(QStringLiteral("/proc/%1/smaps_rollup").arg(process_.processId()));
    Memory memory;
    if (!file.open(QIODevice::ReadOnly))
        return memory;
    const auto lines = file.readAll().split('\n');
    for (const QByteArray& line : lines) {
        const qint64 kiB = line.simplified().split(' ').value(1).toLongLong();
        if (line.startsWith("Private_Clean:") || line.startsWith("Private_Dirty:"))
            memory.ownKiB += kiB;
        else if (line.startsWith("Rss:"))
            memory.residentKiB = kiB;
    }
    return memory;
}

double Child::cpuMsAtIdle() const
{
    QElapsedTimer patience;
    patience.start();
    while (patience.elapsed() < 60'000) {
        const double before = cpuMs();
        QThread::msleep(windowMs);
        if (cpuMs() - before < restCpuMs)
            return before;
    }
    throw std::runtime_error("a measured process never comes to rest");
}
