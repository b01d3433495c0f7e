#include "desktop/forms/QtDesktop.h"
#include "session/OneProgram.h"
#include "session/forms/Program.h"
#include "settings/Paths.h"

#include <QApplication>
#include <QDebug>
#include <QTimer>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("BreloIM"));
    QApplication::setDesktopFileName(QStringLiteral("breloim"));
    QApplication::setQuitOnLastWindowClosed(false);
    OneProgram only(paths::settingsFile());
    if (!only.isFirst()) {
        if (only.summonFirst())
            return 0;
        const QString hangs =
            OneProgram::tr("BreloIM runs already, and does not answer. End that program before "
                           "you start it anew.");
        qCritical().noquote() << hangs;
        QtMessageBoxes().critical(QStringLiteral("BreloIM"), hangs);
        return 1;
    }
    Program program;
    QObject::connect(&only, &OneProgram::summoned, &application, [&program] { program.bringUp(); });
    // Within the loop, so that an end under a box of the start is an end.
    QTimer::singleShot(0, &application, [&program] {
        if (!program.start())
            QCoreApplication::exit(1);
    });
    return QApplication::exec();
}
