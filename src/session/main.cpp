#include "session/forms/Program.h"

#include <QApplication>
#include <QIcon>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("BreloIM"));
    QApplication::setDesktopFileName(QStringLiteral("breloim"));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/breloim.svg")));
    Program program;
    return program.start() ? QApplication::exec() : 1;
}
