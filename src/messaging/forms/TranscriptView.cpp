#include "messaging/forms/TranscriptView.h"

#include "messaging/LinkScanner.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLocale>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCharFormat>

namespace
{

using Style = TranscriptRun::Style;

QTextCharFormat coloured(const QColor& colour)
{
    QTextCharFormat format;
    format.setForeground(colour);
    format.setFontWeight(QFont::Normal);
    return format;
}

QTextCharFormat stampFormat()
{
    QTextCharFormat format = coloured(Qt::white);
    format.setBackground(QColor(62, 128, 194));
    return format;
}

QTextCharFormat bold(const QColor& colour)
{
    QTextCharFormat format = coloured(colour);
    format.setFontWeight(QFont::Bold);
    return format;
}

const QTextCharFormat& formatOf(Style style)
{
    static const QTextCharFormat stamp = stampFormat();
    static const QTextCharFormat own = coloured(QColor(99, 161, 64));
    static const QTextCharFormat peer = coloured(QColor(255, 50, 50));
    static const QTextCharFormat notice = coloured(QColor(85, 126, 186));
    static const QTextCharFormat plain = coloured(Qt::black);
    static const QTextCharFormat body = bold(Qt::black);
    static const QTextCharFormat roomStamp = bold(QColor(62, 128, 194));
    static const QTextCharFormat roomNick = bold(QColor(99, 181, 64));
    static const QTextCharFormat roomAction = bold(QColor(185, 0, 0));
    static const QTextCharFormat roomStatus = bold(QColor(80, 80, 80));
    switch (style) {
    case Style::Stamp:
        return stamp;
    case Style::OwnName:
        return own;
    case Style::PeerName:
        return peer;
    case Style::NoticeSender:
        return notice;
    case Style::Plain:
        return plain;
    case Style::RoomStamp:
        return roomStamp;
    case Style::RoomNick:
        return roomNick;
    case Style::RoomAction:
        return roomAction;
    case Style::RoomStatus:
        return roomStatus;
    case Style::Body:
        break;
    }
    return body;
}

bool holdsLinks(Style style)
{
    return style == Style::Body || style == Style::Plain || style == Style::RoomAction ||
           style == Style::RoomStatus;
}

// The state of a block that goes on with the line of the block before it.
constexpr int continued = 1;

QTextCharFormat linkFormat(QTextCharFormat format, const QString& target)
{
    format.setAnchor(true);
    format.setAnchorHref(target);
    format.setForeground(QColor(0, 0, 192));
    format.setFontUnderline(true);
    return format;
}

} // namespace

TranscriptView::TranscriptView(QWidget* parent) : QPlainTextEdit(parent), end_(document())
{
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    viewport()->setMouseTracking(true);
    QPalette page = palette();
    page.setColor(QPalette::Base, Qt::white);
    page.setColor(QPalette::Text, Qt::black);
    setPalette(page);
}

void TranscriptView::appendLine(std::initializer_list<TranscriptRun> runs)
{
    beginEdit();
    for (const auto& run : runs) {
        const qsizetype shown = longlines::shownLength(run.text);
        if (holdsLinks(run.style))
            insertLinked(run.text.left(shown), formatOf(run.style));
        else
            insertBroken(run.text.left(shown), formatOf(run.style));
        if (shown < run.text.size())
            insertBroken(moreText.arg(QLocale().toString(run.text.size() - shown)), formatOf(Style::Plain));
    }
    end_.insertBlock();
    lines_.beginLine();
}

void TranscriptView::appendText(const QString& text, bool bold)
{
    beginEdit();
    insertLinked(text, formatOf(bold ? Style::Body : Style::Plain));
}

void TranscriptView::scrollToEnd()
{
    follows_ = true;
    if (!editing_)
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void TranscriptView::clearTranscript()
{
    finishEdit();
    clear();
    lines_.beginLine();
}

// The edit stays open until control returns to the event loop, so that a flood is laid out once a tick.
void TranscriptView::beginEdit()
{
    if (!editing_) {
        editing_ = true;
        follows_ = isAtEnd();
        top_ = QTextCursor(firstVisibleBlock());
        topNumber_ = top_.blockNumber();
        end_.beginEditBlock();
        QMetaObject::invokeMethod(this, &TranscriptView::finishEdit, Qt::QueuedConnection);
    }
    end_.movePosition(QTextCursor::End);
}

void TranscriptView::finishEdit()
{
    if (!editing_)
        return;
    editing_ = false;
    removeOldest();
    end_.endEditBlock();
    if (follows_)
        scrollToEnd();
    else if (top_.blockNumber() != topNumber_) // the oldest lines went
        verticalScrollBar()->setValue(top_.block().firstLineNumber());
}

// The document's own bound would lay out each block that goes.
void TranscriptView::removeOldest()
{
    const int surplus = document()->blockCount() - mostBlocks_;
    if (surplus <= 0)
        return;
    QTextCursor oldest(document());
    oldest.setPosition(document()->findBlockByNumber(surplus).position(), QTextCursor::KeepAnchor);
    oldest.removeSelectedText();
}

void TranscriptView::insertLinked(const QString& text, const QTextCharFormat& format)
{
    qsizetype done = 0;
    for (const auto& link : findLinks(text)) {
        insertBroken(text.mid(done, link.start - done), format);
        insertBroken(text.mid(link.start, link.length), linkFormat(format, link.target));
        done = link.start + link.length;
    }
    insertBroken(done == 0 ? text : text.mid(done), format);
}

void TranscriptView::insertBroken(const QString& text, const QTextCharFormat& format)
{
    for (qsizetype start = 0; start < text.size();) {
        const qsizetype length = lines_.take(QStringView(text).mid(start));
        end_.insertText(text.mid(start, length), format);
        start += length;
        if (start < text.size()) {
            end_.insertBlock();
            end_.block().setUserState(continued);
        }
    }
}

QString TranscriptView::transcriptText() const
{
    return textBetween(0, document()->characterCount() - 1);
}

QString TranscriptView::textBetween(int start, int end) const
{
    QString text;
    for (auto block = document()->findBlock(start); block.isValid() && block.position() <= end;
         block = block.next()) {
        if (block.position() > start && block.userState() != continued)
            text += u'\n';
        const int from = qMax(start, block.position());
        text += QStringView(block.text()).mid(from - block.position(), end - from);
    }
    return text;
}

QMimeData* TranscriptView::createMimeDataFromSelection() const
{
    auto* data = new QMimeData;
    data->setText(textBetween(textCursor().selectionStart(), textCursor().selectionEnd()));
    return data;
}

bool TranscriptView::isAtEnd() const
{
    return verticalScrollBar()->value() >= verticalScrollBar()->maximum();
}

void TranscriptView::keyPressEvent(QKeyEvent* event)
{
    const bool command = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (!command && !event->text().isEmpty() && event->text().at(0).isPrint())
        emit typed(event->text());
    else
        QPlainTextEdit::keyPressEvent(event);
}

// The widget's own anchorAt() finds nothing in a plain text's layout.
QString TranscriptView::linkAt(QPoint position) const
{
    QTextCursor cursor = cursorForPosition(position);
    const QRect caret = cursorRect(cursor);
    if (position.y() < caret.top() || position.y() > caret.bottom())
        return {};
    // The format is that of the character before the cursor.
    if (position.x() >= caret.left() &&
        (cursor.atBlockEnd() || !cursor.movePosition(QTextCursor::NextCharacter)))
        return {};
    return cursor.charFormat().anchorHref();
}

void TranscriptView::mousePressEvent(QMouseEvent* event)
{
    const QString target = event->button() == Qt::LeftButton ? linkAt(event->pos()) : QString();
    if (target.isEmpty())
        QPlainTextEdit::mousePressEvent(event);
    else
        emit linkPressed(target);
}

void TranscriptView::mouseMoveEvent(QMouseEvent* event)
{
    QPlainTextEdit::mouseMoveEvent(event);
    viewport()->setCursor(linkAt(event->pos()).isEmpty() ? Qt::IBeamCursor : Qt::PointingHandCursor);
}

void TranscriptView::contextMenuEvent(QContextMenuEvent* event)
{
    const bool shift = event->reason() == QContextMenuEvent::Mouse && event->modifiers() & Qt::ShiftModifier;
    emit menuRequested(event->globalPos(), shift);
}

// A repaint that doesn't wait for the event loop must not meet lines without a layout.
void TranscriptView::paintEvent(QPaintEvent* event)
{
    finishEdit();
    QPlainTextEdit::paintEvent(event);
}

void TranscriptView::resizeEvent(QResizeEvent* event)
{
    const bool follows = isAtEnd();
    QPlainTextEdit::resizeEvent(event);
    if (follows)
        scrollToEnd();
}
