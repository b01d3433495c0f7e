#pragma once

#include "services/SearchAnswers.h"

#include <QAbstractTableModel>

// The people whom a directory found, a row each.
class ResultModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    // The whole value, of which no more is shown than has room.
    static constexpr int ValueRole = Qt::UserRole;
    // By what rows are sorted, in the order of the person's language.
    static constexpr int SortRole = Qt::UserRole + 1;

    using QAbstractTableModel::QAbstractTableModel;

    void setResults(searchanswers::Results results);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    searchanswers::Results results_;
};
