#include "Cases.h"

#include <QCoreApplication>

#include <cstdio>
#include <exception>

// Measures the client from outside and prints one table.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    try {
        Table table;
        Cases cases(table);
        cases.start();
        cases.signedIn(0);
        cases.signedIn(10'000);
        cases.driven();
        table.print();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
