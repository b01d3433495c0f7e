#pragma once

#include "contacts/ContactTree.h"

#include <QElapsedTimer>
#include <QSet>
#include <QTreeView>

#include <functional>

// The contact tree on the screen. It keeps the selection, the place and the open folders over a reset of the
// model, and turns mouse and keys into what the contact list understands.
class RosterView : public QTreeView
{
    Q_OBJECT

public:
    RosterView(ContactTree& tree, QWidget* parent);

    // Asked before a label is edited and before a drag begins.
    std::function<bool(const TreeNode&)> mayEdit;
    std::function<bool()> mayDrag;

    // The person edits a label or drags a node: a reset now would take it from them.
    bool isBusy() const { return dragging_ || state() == EditingState; }
    // Null for none.
    const TreeNode* selectedNode() const;
    void clearSelected();
    // Marks the rows of these JIDs, or the closed folders that they lie in.
    void setUnread(const QStringList& jids);
    bool isUnread(const TreeNode& node) const { return unread_.contains(node.key.toLower()); }

signals:
    // A mouse press, with what it hit; null beside all nodes.
    void nodePressed(const TreeNode* node);
    // A right click, or the menu key.
    void menuRequested(const TreeNode* node, const QPoint& globalPosition);
    // Double click or Enter on the selected node.
    void nodeOpened();
    void deletePressed();
    // What is dragged was dropped on the node of this key; empty for none.
    void dropped(const QString& key);

protected:
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;

private:
    void showMenuOfSelection();
    void drawDot(QPainter& painter, const QRect& row) const;
    void rememberPlace();
    void restorePlace();
    void setDropHighlight(const QModelIndex& index);
    static TreeNode* nodeAt(const QModelIndex& index);

    ContactTree& tree_;
    QPersistentModelIndex dropHighlight_;
    QSet<QString> closed_; // keys of the folders that the person closed
    QSet<QString> unread_; // JIDs in lower case
    QString keptKey_;
    bool keptFolder_ = false;
    int keptScroll_ = 0;
    QElapsedTimer active_;   // since the window came to the front
    bool pressWoke_ = false; // the last press brought the window to the front
    bool dragging_ = false;
};
