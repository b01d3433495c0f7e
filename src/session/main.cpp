#include "session/OneProgram.h"
#include "session/forms/Program.h"
#include "settings/Paths.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("BreloIM"));
    QApplication::setDesktopFileName(QStringLiteral("breloim"));
    QApplication::setQuitOnLastWindowClosed(false);
    OneProgram only(paths::settingsFile());
    if (!only.isFirst())
        return only.summonFirst() ? 0 : 1;
    Program program;
    QObject::connect(&only, &OneProgram::summoned, &application, [&program] { program.bringUp(); });
    return program.start() ? QApplication::exec() : 1;
}
