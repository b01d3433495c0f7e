#pragma once

#include <QTreeView>

class Occupants;
class QSortFilterProxyModel;

// The occupants of a room by their nicks, each with the picture of the status.
class OccupantsView : public QTreeView
{
    Q_OBJECT

public:
    explicit OccupantsView(QWidget* parent = nullptr);

    // The list must outlive the view's use.
    void setOccupants(Occupants& occupants);
    // The address of the selected occupant; empty for none.
    QString selectedKey() const;

signals:
    // A right click without Shift, or the menu key.
    void menuRequested(const QPoint& globalPosition);
    // Double click or Enter on the selected occupant.
    void opened();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QSortFilterProxyModel* sorted_;
};
