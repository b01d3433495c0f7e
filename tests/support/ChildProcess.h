#pragma once

#include <QProcess>

#include <csignal>
#include <sys/prctl.h>

namespace child
{

// A test program that dies leaves nothing running behind it.
inline void endsWithUs(QProcess& process)
{
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

} // namespace child
