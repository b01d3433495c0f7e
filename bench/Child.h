#pragma once

#include <QElapsedTimer>
#include <QProcess>

// What a process holds in memory, in KiB.
struct Memory {
    qint64 ownKiB = 0;      // private, clean and dirty
    qint64 residentKiB = 0; // with what it shares
};

// A process that is measured from outside. It is killed when this goes.
class Child
{
public:
    Child(const QString& program, const QStringList& arguments, const QProcessEnvironment& environment);
    ~Child();

    QProcess& process() { return process_; }
    // Since just before the process was started.
    double wallMs() const;
    // Of all its threads.
    double cpuMs() const;
    Memory memory() const;
    // Waits until the process does next to nothing, and gives the CPU time that it had used by then. Throws
    // std::runtime_error when that takes more than a minute.
    double cpuMsAtIdle() const;

private:
    QElapsedTimer clock_;
    QProcess process_;
};
