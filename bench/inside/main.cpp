#include "inside/Drive.h"

#include <QApplication>

#include <cstdio>
#include <exception>

// The client with its own settings, driven from within: breloim-bench-inside CONTACTS [STEP...]
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("BreloIM"));
    QApplication::setQuitOnLastWindowClosed(false);
    try {
        const auto arguments = QApplication::arguments();
        Drive(arguments.value(1).toInt(), arguments.mid(2)).run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
