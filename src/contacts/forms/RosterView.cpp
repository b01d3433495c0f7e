#include "contacts/forms/RosterView.h"

#include "contacts/forms/RosterDelegate.h"

#include <QContextMenuEvent>
#include <QDrag>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace
{

QString contactFormat()
{
    return QStringLiteral("application/x-breloim-contact");
}

} // namespace

RosterView::RosterView(ContactTree& tree, QWidget* parent) : QTreeView(parent), tree_(tree)
{
    setObjectName(QStringLiteral("RosterView"));
    setAccessibleName(tr("Contacts"));
    setItemDelegate(new RosterDelegate(this));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setIconSize({16, 16});
    setIndentation(16);
    setEditTriggers(EditKeyPressed | SelectedClicked);
    setSelectionMode(SingleSelection);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDragDropMode(InternalMove);
    setDropIndicatorShown(false);
    setTextElideMode(Qt::ElideRight);
    setModel(&tree);
    connect(&tree, &ContactTree::modelAboutToBeReset, this, &RosterView::rememberPlace);
    // After the view and its selection have forgotten everything.
    connect(&tree, &ContactTree::modelReset, this, &RosterView::restorePlace);
    // A folder that the person closed stays closed when the tree is made anew.
    connect(this, &QTreeView::expanded, this,
            [this](const QModelIndex& index) { closed_.remove(nodeAt(index)->key); });
    connect(this, &QTreeView::collapsed, this,
            [this](const QModelIndex& index) { closed_.insert(nodeAt(index)->key); });
    connect(this, &QTreeView::doubleClicked, this, &RosterView::nodeOpened);
}

TreeNode* RosterView::nodeAt(const QModelIndex& index)
{
    return index.isValid() ? ContactTree::node(index) : nullptr;
}

const TreeNode* RosterView::selectedNode() const
{
    const auto selected = selectionModel()->selectedIndexes();
    return selected.isEmpty() ? nullptr : nodeAt(selected.first());
}

void RosterView::clearSelected()
{
    selectionModel()->clear();
}

void RosterView::rememberPlace()
{
    const TreeNode* node = selectedNode();
    keptKey_ = node ? node->key : QString();
    keptFolder_ = node && !node->parent;
    keptScroll_ = verticalScrollBar()->value();
}

void RosterView::restorePlace()
{
    // The layout is still put off here, so that opening a folder costs nothing.
    for (int row = 0; row < tree_.rowCount(); ++row) {
        const auto index = tree_.index(row, 0);
        if (nodeAt(index)->expanded && !closed_.contains(nodeAt(index)->key))
            expand(index);
    }
    const TreeNode* kept = keptFolder_ ? tree_.folder(keptKey_) : tree_.row(keptKey_);
    if (kept)
        selectionModel()->setCurrentIndex(tree_.indexOf(kept), QItemSelectionModel::ClearAndSelect);
    if (keptScroll_ > 0 && isVisible()) {
        executeDelayedItemsLayout();
        verticalScrollBar()->setValue(std::exchange(keptScroll_, 0));
    }
}

bool RosterView::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event)
{
    const TreeNode* node = nodeAt(index);
    if (trigger == SelectedClicked && pressWoke_)
        return false;
    if (trigger != NoEditTriggers && trigger != AllEditTriggers && (!node || (mayEdit && !mayEdit(*node))))
        return false;
    return QTreeView::edit(index, trigger, event);
}

bool RosterView::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate)
        active_.start();
    return QTreeView::event(event);
}

void RosterView::mousePressEvent(QMouseEvent* event)
{
    // The window manager passes the press on just before or just after it makes the window active.
    constexpr int passedOnWithin = 300;
    pressWoke_ = !isActiveWindow() || (active_.isValid() && active_.elapsed() < passedOnWithin);
    const QModelIndex index = indexAt(event->position().toPoint());
    setDropHighlight({});
    QTreeView::mousePressEvent(event);
    if (!index.isValid())
        clearSelected();
    emit nodePressed(nodeAt(index));
    if (event->button() == Qt::RightButton && (!index.isValid() || !(event->modifiers() & Qt::ShiftModifier)))
        emit menuRequested(nodeAt(index), event->globalPosition().toPoint());
}

void RosterView::contextMenuEvent(QContextMenuEvent* event)
{
    event->accept();
    if (event->reason() == QContextMenuEvent::Mouse)
        return; // the press has shown the menu already
    showMenuOfSelection();
}

void RosterView::showMenuOfSelection()
{
    const TreeNode* node = selectedNode();
    const QRect row = node ? visualRect(tree_.indexOf(node)) : QRect(0, 0, 1, 1);
    emit nodePressed(node);
    emit menuRequested(node, viewport()->mapToGlobal(row.center()));
}

void RosterView::keyPressEvent(QKeyEvent* event)
{
    const bool plain = state() != EditingState && event->modifiers() == Qt::NoModifier;
    const bool keypadEnter = event->key() == Qt::Key_Enter && state() != EditingState;
    if ((plain && event->key() == Qt::Key_Return) || keypadEnter)
        emit nodeOpened();
    else if (plain && event->key() == Qt::Key_Delete)
        emit deletePressed();
    else if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)
        showMenuOfSelection(); // for keyboards without a menu key
    else
        QTreeView::keyPressEvent(event);
}

void RosterView::startDrag(Qt::DropActions)
{
    const TreeNode* node = selectedNode();
    if (!node || (mayDrag && !mayDrag()))
        return;
    auto* drag = new QDrag(this);
    auto* data = new QMimeData;
    data->setData(contactFormat(), node->key.toUtf8());
    drag->setMimeData(data);
    drag->setPixmap(grab(visualRect(tree_.indexOf(node))));
    dragging_ = true;
    drag->exec(Qt::MoveAction);
    dragging_ = false;
    setDropHighlight({});
}

void RosterView::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasFormat(contactFormat()))
        event->acceptProposedAction();
}

void RosterView::dragMoveEvent(QDragMoveEvent* event)
{
    QTreeView::dragMoveEvent(event); // scrolls near the edges
    setDropHighlight(indexAt(event->position().toPoint()));
    if (dropHighlight_.isValid())
        event->acceptProposedAction();
    else
        event->ignore();
}

void RosterView::dragLeaveEvent(QDragLeaveEvent* event)
{
    setDropHighlight({});
    QTreeView::dragLeaveEvent(event);
}

void RosterView::dropEvent(QDropEvent* event)
{
    const TreeNode* target = nodeAt(indexAt(event->position().toPoint()));
    // The model is changed by the handler: the view must not remove the row itself.
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
    setState(NoState);
    setDropHighlight({});
    emit dropped(target ? target->key : QString());
}

void RosterView::setDropHighlight(const QModelIndex& index)
{
    if (dropHighlight_ == index)
        return;
    dropHighlight_ = index;
    viewport()->update();
}

void RosterView::setUnread(const QStringList& jids)
{
    unread_.clear();
    for (const auto& jid : jids)
        unread_ += jid.toLower();
    viewport()->update();
}

// At the end of the row, with a rim that stands out from a selection.
void RosterView::drawDot(QPainter& painter, const QRect& row) const
{
    const int size = row.height() / 2;
    QRect dot(0, 0, size, size);
    dot.moveCenter(row.center());
    dot.moveRight(viewport()->rect().right() - size / 2);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::Base));
    painter.setBrush(QColor(0xD4, 0x1C, 0x1C));
    painter.drawEllipse(dot);
    painter.restore();
}

void RosterView::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const
{
    QTreeView::drawRow(painter, option, index);
    const TreeNode& node = *ContactTree::node(index);
    const bool hides = !isExpanded(index) && std::any_of(node.children.begin(), node.children.end(),
                                                         [this](auto* child) { return isUnread(*child); });
    if (hides || isUnread(node))
        drawDot(*painter, option.rect);
    if (index != dropHighlight_)
        return;
    painter->save();
    painter->setPen(palette().color(QPalette::Text));
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter->restore();
}
