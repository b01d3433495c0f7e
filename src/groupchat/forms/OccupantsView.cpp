#include "groupchat/forms/OccupantsView.h"

#include "desktop/forms/ImageList.h"
#include "groupchat/Occupants.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QSortFilterProxyModel>
#include <QStyledItemDelegate>

namespace
{

class OccupantDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        // The layout takes all of a text before it cuts it to the row, and anew with every repaint.
        constexpr qsizetype longestNick = 200;
        QStyledItemDelegate::initStyleOption(option, index);
        option->text.truncate(longestNick);
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->icon = ImageList::icon(index.data(Occupants::ImageRole).toString());
    }
};

} // namespace

OccupantsView::OccupantsView(QWidget* parent) : QTreeView(parent), sorted_(new QSortFilterProxyModel(this))
{
    setHeaderHidden(true);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setItemDelegate(new OccupantDelegate(this));
    sorted_->setSortCaseSensitivity(Qt::CaseInsensitive);
    setModel(sorted_);
}

void OccupantsView::setOccupants(Occupants& occupants)
{
    sorted_->setSourceModel(&occupants);
    sorted_->sort(0);
}

QString OccupantsView::selectedKey() const
{
    const auto selected = selectionModel()->selectedRows();
    return selected.isEmpty() ? QString() : selected.first().data(Occupants::KeyRole).toString();
}

void OccupantsView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        emit opened();
    else
        QTreeView::keyPressEvent(event);
}

void OccupantsView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && indexAt(event->pos()).isValid())
        emit opened();
}

void OccupantsView::contextMenuEvent(QContextMenuEvent* event)
{
    if (!event->modifiers().testFlag(Qt::ShiftModifier) || event->reason() == QContextMenuEvent::Keyboard)
        emit menuRequested(event->globalPos());
}
