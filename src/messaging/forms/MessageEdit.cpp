#include "messaging/forms/MessageEdit.h"

#include "messaging/LongLines.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>

namespace
{

// Marks a block that goes on with the line of the block before it; undoing and doing again keep it.
constexpr int continued = QTextFormat::UserProperty;

QTextBlockFormat blockFormat(bool isContinued)
{
    QTextBlockFormat format;
    if (isContinued)
        format.setProperty(continued, true);
    return format;
}

} // namespace

MessageEdit::MessageEdit(QWidget* parent) : QPlainTextEdit(parent)
{
    setTabChangesFocus(true);
}

QString MessageEdit::messageText() const
{
    return textBetween(0, document()->characterCount() - 1);
}

// toPlainText() would turn no-break spaces into spaces.
QString MessageEdit::textBetween(int start, int end) const
{
    QString text;
    for (auto block = document()->findBlock(start); block.isValid() && block.position() <= end;
         block = block.next()) {
        if (block.position() > start && !block.blockFormat().hasProperty(continued))
            text += u'\n';
        const int from = qMax(start, block.position());
        text += QStringView(block.text()).mid(from - block.position(), end - from);
    }
    return text.replace(QChar::LineSeparator, u'\n');
}

void MessageEdit::insertMessage(const QString& given)
{
    QString text = given;
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    text.replace(QChar::ParagraphSeparator, u'\n');
    longlines::Cutter lines;
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    for (qsizetype start = 0; start < text.size();) {
        const auto end = text.indexOf(u'\n', start);
        const auto line = QStringView(text).mid(start, end < 0 ? -1 : end - start);
        const auto length = lines.take(line);
        cursor.insertText(line.left(length).toString());
        start += length;
        if (length < line.size()) {
            cursor.insertBlock(blockFormat(true));
        } else if (end >= 0) {
            cursor.insertBlock(blockFormat(false));
            lines.beginLine();
            ++start;
        }
    }
    cursor.endEditBlock();
    setTextCursor(cursor);
    ensureCursorVisible();
}

void MessageEdit::insertFromMimeData(const QMimeData* source)
{
    insertMessage(source->text());
}

QMimeData* MessageEdit::createMimeDataFromSelection() const
{
    auto* data = new QMimeData;
    data->setText(textBetween(textCursor().selectionStart(), textCursor().selectionEnd()));
    return data;
}

void MessageEdit::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    if (enter && (modifiers == Qt::ControlModifier || (modifiers == Qt::NoModifier && enterSends)))
        emit sendRequested();
    else if (enter && (modifiers == Qt::NoModifier || modifiers == Qt::ShiftModifier))
        insertMessage(QStringLiteral("\n"));
    else
        QPlainTextEdit::keyPressEvent(event);
}
