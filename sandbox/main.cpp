#include "sandbox/SandboxServer.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    sandbox::SandboxServer server;
    return server.listen() ? QCoreApplication::exec() : 1;
}
