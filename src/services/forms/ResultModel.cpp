#include "services/forms/ResultModel.h"

namespace
{

constexpr qsizetype longestShown =
    200; // and compared: the layout takes all of a text before it cuts it to the cell

} // namespace

void ResultModel::setResults(searchanswers::Results results)
{
    beginResetModel();
    results_ = std::move(results);
    endResetModel();
}

int ResultModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(results_.rows.size());
}

int ResultModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(results_.columns.size());
}

QVariant ResultModel::data(const QModelIndex& index, int role) const
{
    const QString value = results_.rows.at(index.row()).value(index.column());
    switch (role) {
    case ValueRole:
        return value;
    case SortRole:
        return value.left(longestShown).toCaseFolded();
    case Qt::DisplayRole:
        return value.left(longestShown);
    case Qt::ToolTipRole:
        return value.left(longestShown).toHtmlEscaped();
    default:
        return {};
    }
}

QVariant ResultModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return results_.columns.value(section).left(longestShown);
}
