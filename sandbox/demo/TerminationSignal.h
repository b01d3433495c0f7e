#pragma once

#include <QObject>

namespace sandbox::demo
{

// Turns SIGTERM and SIGINT into a Qt signal. One instance a process.
class TerminationSignal : public QObject
{
    Q_OBJECT
public:
    TerminationSignal();
    ~TerminationSignal() override;

signals:
    void received();
};

} // namespace sandbox::demo
