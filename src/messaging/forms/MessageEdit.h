#pragma once

#include <QPlainTextEdit>
#include <QString>

// The box in which a message is written. Enter sends while `enterSends` is on, and Shift+Enter then begins a
// new line; otherwise Enter begins a new line. Ctrl+Enter always sends. Tab leaves the box.
class MessageEdit : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit MessageEdit(QWidget* parent = nullptr);

    bool enterSends = true;
    // The text with every character as typed; lines end with a line feed.
    QString messageText() const;

signals:
    void sendRequested();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
