#pragma once

#include "desktop/Desktop.h"

// The seams to the world outside, as Qt and the machine offer them.

// Boxes over the active window. Their texts are plain, whatever they hold.
class QtMessageBoxes : public MessageBoxes
{
public:
    // From now on nobody is there to answer: texts go to the standard error output, and the answer is the
    // one that changes nothing.
    void setUnattended() { unattended_ = true; }
    Answer show(const QString& title, const QString& text, Icon icon, Buttons buttons) override;
    std::optional<QString> input(const QString& title, const QString& prompt, const QString& preset) override;

private:
    bool unattended_ = false;
};

// The desktop's own file dialogs, on top of the active window.
class QtFileDialogs : public FileDialogs
{
public:
    QString openFile(const QString& title, const QString& filter) override;
};

// The desktop's own colour and font dialogs, on top of the active window.
class QtLookDialogs : public LookDialogs
{
public:
    std::optional<int> colour(int current) override;
    std::optional<FontChoice> font(const FontChoice& current) override;
};

// Hands safe links to the desktop's handlers.
class DesktopLinkOpener : public LinkOpener
{
public:
    bool open(const QString& link) override;
};

// The machine's clock, in local time, to the second. The time zone, which costs a look at the disk, is asked
// once a second at most.
class SystemClock : public Clock
{
public:
    QDateTime now() const override;

private:
    mutable QDateTime now_;
    mutable qint64 second_ = 0;
};

// The mouse pointer, in logical pixels of the whole desktop.
class CursorPointer : public Pointer
{
public:
    QPoint position() const override;
};
