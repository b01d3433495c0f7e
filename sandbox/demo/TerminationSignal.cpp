#include "sandbox/demo/TerminationSignal.h"

#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace sandbox::demo
{
namespace
{

int ends[2] = {-1, -1}; // a handler may do little more than write

void note(int)
{
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(ends[0], &byte, 1);
}

} // namespace

TerminationSignal::TerminationSignal()
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        qFatal("no socket pair for signals");
    auto* notifier = new QSocketNotifier(ends[1], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        emit received();
    });
    std::signal(SIGTERM, note);
    std::signal(SIGINT, note);
}

TerminationSignal::~TerminationSignal()
{
    std::signal(SIGTERM, SIG_DFL);
    std::signal(SIGINT, SIG_DFL);
    ::close(ends[0]);
    ::close(ends[1]);
}

} // namespace sandbox::demo
