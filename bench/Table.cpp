#include "Table.h"

#include <array>
#include <cstdio>

namespace
{

QString number(double value)
{
    return QString::number(value, 'f', value < 10 ? 2 : value < 100 ? 1 : 0);
}

} // namespace

void Table::add(const Row& row)
{
    rows_ += cells(row);
}

QStringList Table::cells(const Row& row)
{
    QString target;
    bool reached = true;
    if (row.most) {
        target = QStringLiteral("<= %1 %2").arg(number(*row.most), row.unit);
        reached = row.value <= *row.most;
    } else if (row.mostTimesEmpty) {
        target = QStringLiteral("<= %1 x empty").arg(number(*row.mostTimesEmpty));
        reached = row.value <= *row.mostTimesEmpty * row.empty.value_or(0);
    }
    const bool comparable = row.empty && *row.empty > 0;
    return {row.what,
            number(row.value) + u' ' + row.unit,
            row.empty ? number(*row.empty) + u' ' + row.unit : QStringLiteral("-"),
            comparable ? number(row.value / *row.empty) + QStringLiteral(" x") : QStringLiteral("-"),
            target.isEmpty() ? QStringLiteral("-") : target,
            target.isEmpty() ? QString()
            : reached        ? QStringLiteral("yes")
                             : QStringLiteral("NO")};
}

void Table::print() const
{
    static const QStringList head{QStringLiteral("measured"),     QStringLiteral("BreloIM"),
                                  QStringLiteral("empty window"), QStringLiteral("ratio"),
                                  QStringLiteral("target"),       QStringLiteral("reached")};
    std::array<qsizetype, 6> widths{};
    const auto measure = [&widths](const QStringList& row) {
        for (std::size_t i = 0; i < widths.size(); ++i)
            widths[i] = qMax(widths[i], row.at(qsizetype(i)).size());
    };
    measure(head);
    for (const auto& row : rows_)
        measure(row);
    const auto line = [&widths](const QStringList& row) {
        QString text = row.at(0).leftJustified(widths[0]);
        for (std::size_t i = 1; i < widths.size(); ++i)
            text += QStringLiteral("  ") + row.at(qsizetype(i)).rightJustified(widths[i]);
        std::printf("%s\n", qPrintable(text));
    };
    line(head);
    for (const auto& row : rows_)
        line(row);
    std::fflush(stdout);
}
