#pragma once

#include "desktop/forms/Form.h"
#include "messaging/forms/ChatWindow.h"
#include "messaging/forms/HeadLineForm.h"
#include "messaging/forms/MessageForm.h"
#include "support/FakeEngine.h"
#include "support/RecordingDesktop.h"
#include "support/TempProfile.h"

#include <QLabel>
#include <QPlainTextEdit>

// romeo@montague.example with a hub of real windows. juliet@capulet.example is a contact.
class MessagingFixture
{
public:
    MessagingFixture();
    ~MessagingFixture();

    // The window that the session of the bare JID keeps, or null.
    MessageForm* window(const QString& bare, const QString& key = QStringLiteral("ChatWnd"));
    // Opens a contact's window as a double click does.
    MessageForm* open(const QString& jid);
    // Injects a message; `inner` is what the element holds.
    void message(const QString& from, const QString& type, const QString& inner);
    // Everything in the log of `peer`; null when there is none.
    QString logOf(const QString& peer) const;
    HeadLineForm& notices();

    static QString transcript(const QWidget& form, const char* name = "txtLog");
    // The colours and weight of the transcript's text that begins with `text`.
    static QTextCharFormat formatOf(const QWidget& form, const QString& text);
    static QString panel(const MessageForm& window);
    template <typename T>
    static T& control(const QWidget& form, const char* name)
    {
        auto* found = form.findChild<T*>(QString::fromLatin1(name));
        if (!found)
            qFatal("no control %s", name);
        return *found;
    }

    TempProfile profile;
    RecordingDesktop world;
    Client client;
    FakeEngine engine{client};
    FormRegistry registry;
    std::unique_ptr<ChatWindow> hub;
};

extern const QString own;
extern const QString juliet;
