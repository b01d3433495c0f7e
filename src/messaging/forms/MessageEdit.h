#pragma once

#include <QPlainTextEdit>
#include <QString>

// The box in which a message is written. Enter sends while `enterSends` is on, and Shift+Enter then begins a
// new line; otherwise Enter begins a new line. Ctrl+Enter always sends. Tab leaves the box. A line of extreme
// length is laid out in pieces, since the whole of it would be laid out at every key.
class MessageEdit : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit MessageEdit(QWidget* parent = nullptr);

    bool enterSends = true;
    // The text with every character as typed; lines end with a line feed.
    QString messageText() const;
    // Inserts a text at the caret, in the place of what is selected.
    void insertMessage(const QString& text);

signals:
    void sendRequested();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;
    QMimeData* createMimeDataFromSelection() const override;

private:
    QString textBetween(int start, int end) const;
};
