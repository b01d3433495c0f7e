#pragma once

#include "messaging/LongLines.h"

#include <QPlainTextEdit>
#include <QString>
#include <QTextCursor>

#include <limits>

#include <initializer_list>

// A run of a transcript line: a text in one of the transcripts' fixed styles. Links are found in plain text
// and in bodies.
struct TranscriptRun {
    enum class Style {
        Stamp,
        OwnName,
        PeerName,
        NoticeSender,
        Plain,
        Body,
        RoomStamp,
        RoomNick,
        RoomAction,
        RoomStatus
    };

    Style style;
    QString text;
};

// A read-only transcript of coloured lines whose links can be pressed. Its page stays white in a dark desktop
// too, since the colours of its lines are fixed. Lines that come together are laid out once; the text is
// there at once. Of a message of extreme size the beginning is shown, and the oldest lines go when there are
// too many.
class TranscriptView : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit TranscriptView(QWidget* parent = nullptr);

    // Stands behind a text that is not shown whole; "%1" becomes the number of characters that are missing.
    QString moreText = tr(" [... and %1 more characters]");

    // Appends the runs and ends the line. The view follows the end unless the person has scrolled away from
    // it.
    void appendLine(std::initializer_list<TranscriptRun> runs);
    // Appends a text as it stands, ended by nothing, in the style of plain text or of bodies.
    void appendText(const QString& text, bool bold);
    void scrollToEnd();
    void clearTranscript();
    // However many lines it holds, none goes.
    void keepAll() { mostBlocks_ = std::numeric_limits<int>::max(); }
    // The text as it came; lines end with a line feed.
    QString transcriptText() const;

signals:
    // A press on a link; `target` has a scheme, but nothing else has been checked.
    void linkPressed(const QString& target);
    // Text typed while the transcript has the focus.
    void typed(const QString& text);
    // `shift` tells whether the key is held under the mouse's click.
    void menuRequested(const QPoint& globalPosition, bool shift);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;

private:
    void beginEdit();
    void finishEdit();
    void removeOldest();
    void insertLinked(const QString& text, const QTextCharFormat& format);
    void insertBroken(const QString& text, const QTextCharFormat& format);
    QString textBetween(int start, int end) const;
    bool isAtEnd() const;
    QString linkAt(QPoint position) const;

    QTextCursor end_;
    QTextCursor top_; // of the first line in view, and the number that it had, while an edit is open
    int topNumber_ = 0;
    int mostBlocks_ = 10'000;
    longlines::Cutter lines_;
    bool editing_ = false;
    bool follows_ = true;
};
