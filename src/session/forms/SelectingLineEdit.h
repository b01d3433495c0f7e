#pragma once

#include <QFocusEvent>
#include <QLineEdit>
#include <QMouseEvent>

#include <utility>

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
        pressed_ = event->reason() == Qt::MouseFocusReason;
        if (!pressed_)
            selectAll();
    }
    // A press that gives the focus puts its caret first.
    void mousePressEvent(QMouseEvent* event) override
    {
        QLineEdit::mousePressEvent(event);
        if (std::exchange(pressed_, false))
            selectAll();
    }

private:
    bool pressed_ = false;
};
