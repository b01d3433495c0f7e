#pragma once

#include <QStringList>

#include <optional>

// The one table: what was measured, beside the empty window and the target.
class Table
{
public:
    struct Row {
        QString what;
        QString unit;
        double value = 0;
        std::optional<double> empty;          // the empty window's
        std::optional<double> most;           // target for the value
        std::optional<double> mostTimesEmpty; // target for the value as a multiple of the empty window's
    };

    void add(const Row& row);
    void print() const;

private:
    static QStringList cells(const Row& row);

    QList<QStringList> rows_;
};
