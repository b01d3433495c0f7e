#include "services/forms/ListParts.h"

#include <QAbstractItemView>
#include <QFocusEvent>
#include <QItemSelectionModel>
#include <QPainter>

void paintHint(QAbstractScrollArea& list, const QString& text)
{
    QPainter painter(list.viewport());
    painter.setPen(list.palette().color(QPalette::PlaceholderText));
    painter.drawText(list.viewport()->rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap,
                     text);
}

void chooseByTab(QAbstractItemView& list, const QFocusEvent& event)
{
    const bool byTab = event.reason() == Qt::TabFocusReason || event.reason() == Qt::BacktabFocusReason;
    if (byTab && !list.selectionModel()->hasSelection() && list.currentIndex().isValid())
        list.selectionModel()->select(list.currentIndex(),
                                      QItemSelectionModel::Select | QItemSelectionModel::Rows);
}
