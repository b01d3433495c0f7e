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

// A function named on the command line runs in the classes that have it.
bool isAskedFor(const QObject& test, const QStringList& arguments)
{
    bool named = false;
    for (const auto& argument : arguments.mid(1)) {
        if (argument.startsWith(u'-'))
            continue;
        named = true;
        const auto signature = argument.section(u':', 0, 0).toLatin1() + "()";
        if (test.metaObject()->indexOfMethod(signature.constData()) >= 0)
            return true;
    }
    return !named;
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
    qputenv("FONTCONFIG_FILE", BRELO_TEST_FONTS);
    QApplication application(argc, argv);
    QApplication::setApplicationName("BreloIM");
    QApplication::setQuitOnLastWindowClosed(false);
    int failures = 0;
    for (const auto& make : tests()) {
        const auto test = make();
        if (isAskedFor(*test, application.arguments()))
            failures += QTest::qExec(test.get(), argc, argv) != 0;
    }
    return failures == 0 ? 0 : 1;
}
