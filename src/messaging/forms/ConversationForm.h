#pragma once

#include "desktop/forms/SessionForm.h"

// A window in which people write to each other: with one peer, or in a room.
class ConversationForm : public SessionForm
{
    Q_OBJECT

public:
    using SessionForm::SessionForm;

    // Whose conversation it is, also where nothing can be sent.
    QString peer;
    // Somebody opened it who stands in no contact list.
    bool isUnasked = false;

    // "[*]" in a title is a place holder of the toolkit's, and of hostile names the window system is spared.
    void setCaption(const QString& text)
    {
        constexpr qsizetype longest = 1000;
        setWindowTitle(text.left(longest).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")));
    }
    // Whether the person can still go back to it.
    virtual bool isOpen() const { return true; }
};
