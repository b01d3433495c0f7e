#pragma once

#include <QTest>

#include <tuple>
#include <vector>

// Data tables of tests, a line a row.

// The columns of the present table.
inline std::vector<const char*>& columnNames()
{
    static std::vector<const char*> names;
    return names;
}

// The columns: columns<QString, bool>("text", "isSafe").
template <typename... Types, typename... Names>
void columns(Names... names)
{
    columnNames() = {names...};
    (QTest::addColumn<Types>(names), ...);
}

// The present row from its first column on, as many as there are types: const auto [text, isSafe] =
// fetched<QString, bool>().
template <typename... Types>
std::tuple<Types...> fetched()
{
    auto name = columnNames().cbegin();
    return {*static_cast<Types*>(QTest::qData(*name++, qMetaTypeId<Types>()))...};
}

// A row: the values stand in the order of the columns, and are of their types; plain text stands for a
// QString.
template <typename... Values>
void row(const char* name, const Values&... values)
{
    (QTest::newRow(name) << ... << values);
}
