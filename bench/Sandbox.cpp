#include "Sandbox.h"

#include <QCoreApplication>

#include <stdexcept>

Sandbox::Sandbox(int contacts, int groups)
    : server_(QCoreApplication::applicationDirPath() + QStringLiteral("/breloim-sandbox"),
              {QStringLiteral("--print-port"), QStringLiteral("--contacts"), QString::number(contacts),
               QStringLiteral("--groups"), QString::number(groups)},
              QProcessEnvironment::systemEnvironment())
{
    if (!server_.process().waitForReadyRead(10'000))
        throw std::runtime_error("the sandbox does not start");
    port_ = QString::fromLatin1(server_.process().readLine()).trimmed();
}
