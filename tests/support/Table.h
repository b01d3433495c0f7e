#pragma once

#include <QTest>

// Data tables of tests, a line a row.

// The columns: columns<QString, bool>("text", "isSafe").
template <typename... Types, typename... Names>
void columns(Names... names)
{
    (QTest::addColumn<Types>(names), ...);
}

// A row: the values stand in the order of the columns, and are of their types; plain text stands for a
// QString.
template <typename... Values>
void row(const char* name, const Values&... values)
{
    (QTest::newRow(name) << ... << values);
}
