#include "support/TestRunner.h"

#include <QApplication>
#include <QStandardPaths>
#include <QTest>

#include <vector>

namespace
{

auto& tests()
{
    static std::vector<std::function<std::unique_ptr<QObject>()>> all;
    return all;
}

} // namespace

bool registerTest(std::function<std::unique_ptr<QObject>()> make)
{
    tests().push_back(std::move(make));
    return true;
}

// Runs every test class of the program. The exit code tells whether all passed.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("BreloIM"));
    QApplication::setQuitOnLastWindowClosed(false);
    int failures = 0;
    for (const auto& make : tests())
        failures += QTest::qExec(make().get(), argc, argv) != 0;
    return failures == 0 ? 0 : 1;
}
