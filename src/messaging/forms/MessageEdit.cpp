#include "messaging/forms/MessageEdit.h"

#include <QKeyEvent>

MessageEdit::MessageEdit(QWidget* parent) : QPlainTextEdit(parent)
{
    setTabChangesFocus(true);
}

// toPlainText() would turn no-break spaces into spaces.
QString MessageEdit::messageText() const
{
    QString text = document()->toRawText();
    for (const auto separator : {QChar(QChar::ParagraphSeparator), QChar(QChar::LineSeparator)})
        text.replace(separator, u'\n');
    return text;
}

void MessageEdit::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    if (enter && (modifiers == Qt::ControlModifier || (modifiers == Qt::NoModifier && enterSends)))
        emit sendRequested();
    else
        QPlainTextEdit::keyPressEvent(event);
}
