#include "session/forms/Program.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("BreloIM"));
    QApplication::setDesktopFileName(QStringLiteral("breloim"));
    QApplication::setQuitOnLastWindowClosed(false);
    Program program;
    return program.start() ? QApplication::exec() : 1;
}
