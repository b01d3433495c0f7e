#pragma once

#include <QStyledItemDelegate>

// Draws a node of the contact tree: its picture, its colour and its weight.
class RosterDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
