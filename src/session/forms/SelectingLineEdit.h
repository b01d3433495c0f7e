#pragma once

#include <QFocusEvent>
#include <QLineEdit>
#include <QTimer>

// A line edit that selects all of its text when it gets the focus, however it gets it.
class SelectingLineEdit : public QLineEdit
{
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

protected:
    void focusInEvent(QFocusEvent* event) override
    {
        QLineEdit::focusInEvent(event);
        // A mouse press puts its caret after this event.
        QTimer::singleShot(0, this, &QLineEdit::selectAll);
    }
};
