#include "desktop/SystemClose.h"

#include <QCoreApplication>
#include <QEvent>
#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace
{

constexpr int endings[] = {SIGTERM, SIGINT, SIGHUP};

// What the handler, which may do next to nothing, writes to.
volatile std::sig_atomic_t writeEnd = -1;

void handle(int)
{
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(writeEnd, &byte, 1);
}

} // namespace

SystemClose::SystemClose(QObject* parent) : QObject(parent)
{
    QCoreApplication::instance()->installEventFilter(this);
    if (::pipe2(pipe_, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    writeEnd = pipe_[1];
    auto* notifier = new QSocketNotifier(pipe_[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &SystemClose::takeSignal);
    for (const int ending : endings)
        std::signal(ending, handle);
}

SystemClose::~SystemClose()
{
    if (pipe_[0] < 0)
        return;
    for (const int ending : endings)
        std::signal(ending, SIG_DFL);
    ::close(pipe_[0]);
    ::close(pipe_[1]);
}

void SystemClose::takeSignal()
{
    char bytes[16];
    while (::read(pipe_[0], bytes, sizeof bytes) > 0) {
    }
    emit requested();
}

bool SystemClose::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Quit || watched != QCoreApplication::instance())
        return QObject::eventFilter(watched, event);
    emit requested();
    return true;
}
