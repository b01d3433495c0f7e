#pragma once

#include "services/forms/ResultModel.h"

#include <QSortFilterProxyModel>
#include <QTableView>

// The grid of people found, or on line. Rows are selected as a whole; a click on a header sorts. While it is
// empty it says why.
class ResultGrid : public QTableView
{
    Q_OBJECT

public:
    explicit ResultGrid(QWidget* parent = nullptr);

    // In place of what was shown; `hint` stands where there is nobody.
    void showResults(searchanswers::Results results, const QString& hint);
    // What Enter does, as the menu names it.
    void setAction(const QString& text) { action_ = text; }
    // The address in the selected row; empty unless it is one row.
    QString selectedJid() const;
    // The selected rows as text, from top to bottom: a line each, values behind tabs.
    QString selectedText() const;

signals:
    // Of the row that is selected now, as selectedJid().
    void chosen(const QString& jid);
    // Double click or Enter on the selected row, or the menu's first entry.
    void addRequested();
    void messageRequested(const QString& jid);

protected:
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void fitColumns();

    ResultModel results_;
    QSortFilterProxyModel sorted_;
    QString hint_;
    QString action_;
};
