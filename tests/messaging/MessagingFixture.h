#pragma once

#include "desktop/forms/Form.h"
#include "messaging/forms/ChatWindow.h"
#include "messaging/forms/HeadLineForm.h"
#include "messaging/forms/MessageForm.h"
#include "messaging/forms/TranscriptView.h"
#include "support/FakeEngine.h"
#include "support/Files.h"
#include "support/RecordingDesktop.h"
#include "support/Table.h"
#include "support/TempProfile.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextDocument>

inline const QString own = QStringLiteral("romeo@montague.example");
inline const QString juliet = QStringLiteral("juliet@capulet.example");

// romeo@montague.example with a hub of real windows. juliet@capulet.example is a contact.
struct MessagingFixture {
    MessagingFixture()
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
        client.desktop = world.desktop();
        client.MyRoster.AddItem(juliet, "Jule", true, "away", {}, false, {}, "both", {}, "balcony");
        hub = std::make_unique<ChatWindow>(registry, client);
        hub->notices = [this]() -> HeadLineForm& { return notices(); };
        engine.plugIn(hub.get());
    }
    ~MessagingFixture()
    {
        client.UserClosing = client.SessionClosing = true;
        registry.unloadAllExcept({});
        client.Core->PluginManager->sessions().clear();
        registry.deleteAllExcept(nullptr);
    }

    // The window that the session of the bare JID keeps, or null.
    MessageForm* window(const QString& bare, const QString& key = QStringLiteral("ChatWnd"))
    {
        return qobject_cast<MessageForm*>(
            client.Core->PluginManager->sessions().session(bare)->Properties().Item(key));
    }
    // Opens a contact's window as a double click does.
    MessageForm* open(const QString& jid)
    {
        hub->IsTrick = true;
        hub->SendMessage(jid);
        engine.trigger();
        return window(jid);
    }
    // Injects a message; `inner` is what the element holds.
    void message(const QString& from, const QString& type, const QString& inner)
    {
        const QString typed = type.isEmpty() ? QString() : QStringLiteral(" type=\"%1\"").arg(type);
        engine.inject(QStringLiteral("<message from=\"%1\" to=\"%2/BreloIM\"%3>%4</message>")
                          .arg(from, own, typed, inner));
    }
    // Everything in the log of `peer`; null when there is none.
    QString logOf(const QString& peer) const { return QString::fromUtf8(files::read(hub->log().path(peer))); }
    HeadLineForm& notices()
    {
        return registry.single<HeadLineForm>("HeadLineForm",
                                             [this] { return new HeadLineForm(registry, client); });
    }

    static QString transcript(const QWidget& form, const char* name = "txtLog")
    {
        const auto& text = control<QPlainTextEdit>(form, name);
        const auto* log = qobject_cast<const TranscriptView*>(&text);
        return log ? log->transcriptText() : text.toPlainText();
    }
    // The colours and weight of the transcript's text that begins with `text`.
    static QTextCharFormat formatOf(const QWidget& form, const QString& text)
    {
        return control<QPlainTextEdit>(form, "txtLog").document()->find(text).charFormat();
    }
    static QString panel(const MessageForm& window)
    {
        return control<QLabel>(window, "StatusBar1Panel1").text();
    }
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
