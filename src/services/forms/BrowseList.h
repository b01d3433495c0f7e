#pragma once

#include "services/BrowseAnswers.h"

#include <QListWidget>

// Rows with an address behind each name. While it is empty it says why, in the middle.
class BrowseList : public QListWidget
{
    Q_OBJECT

public:
    explicit BrowseList(QWidget* parent = nullptr);

    // What stands in the list already is not added again.
    void addRows(const QList<browseanswers::Row>& rows);
    // Empty when no row is selected.
    QString selectedJid() const;
    void setHint(const QString& text);

signals:
    // Double click or Enter on the selected row.
    void opened();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString hint_;
};
