#pragma once

// Both whole: they are precompiled, and tests drive most of what they hold.
#include <QtTest>
#include <QtWidgets>

#include <functional>
#include <memory>

// Adds a test class to its program's run. Use BRELO_TEST once per class, in its .cpp file.
bool registerTest(std::function<std::unique_ptr<QObject>()> make);

#define BRELO_TEST(Class)                                                                                    \
    [[maybe_unused]] static const bool registered##Class =                                                   \
        registerTest([] { return std::unique_ptr<QObject>(std::make_unique<Class>()); });
