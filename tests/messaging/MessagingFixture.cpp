#include "messaging/MessagingFixture.h"

#include "messaging/forms/TranscriptView.h"
#include "support/Files.h"

#include <QLocale>
#include <QTextBlock>
#include <QTextDocument>

const QString own = QStringLiteral("romeo@montague.example");
const QString juliet = QStringLiteral("juliet@capulet.example");

MessagingFixture::MessagingFixture()
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    client.desktop = world.desktop();
    client.MyRoster.AddItem(juliet, "Jule", true, "away", {}, false, {}, "both", {}, "balcony");
    hub = std::make_unique<ChatWindow>(registry, client);
    hub->notices = [this]() -> HeadLineForm& { return notices(); };
    engine.plugIn(hub.get());
}

MessagingFixture::~MessagingFixture()
{
    client.UserClosing = client.SessionClosing = true;
    registry.unloadAllExcept({});
    client.Core->PluginManager->sessions().clear();
    registry.deleteAllExcept(nullptr);
}

MessageForm* MessagingFixture::window(const QString& bare, const QString& key)
{
    return qobject_cast<MessageForm*>(
        client.Core->PluginManager->sessions().session(bare)->Properties().Item(key));
}

MessageForm* MessagingFixture::open(const QString& jid)
{
    hub->IsTrick = true;
    hub->SendMessage(jid);
    engine.trigger();
    return window(jid);
}

void MessagingFixture::message(const QString& from, const QString& type, const QString& inner)
{
    const QString typed = type.isEmpty() ? QString() : QStringLiteral(" type=\"%1\"").arg(type);
    engine.inject(
        QStringLiteral("<message from=\"%1\" to=\"%2/BreloIM\"%3>%4</message>").arg(from, own, typed, inner));
}

QString MessagingFixture::logOf(const QString& peer) const
{
    return QString::fromUtf8(files::read(hub->log().path(peer)));
}

HeadLineForm& MessagingFixture::notices()
{
    return registry.single<HeadLineForm>("HeadLineForm",
                                         [this] { return new HeadLineForm(registry, client); });
}

QString MessagingFixture::transcript(const QWidget& form, const char* name)
{
    const auto& text = control<QPlainTextEdit>(form, name);
    const auto* log = qobject_cast<const TranscriptView*>(&text);
    return log ? log->transcriptText() : text.toPlainText();
}

QTextCharFormat MessagingFixture::formatOf(const QWidget& form, const QString& text)
{
    auto* document = form.findChild<QPlainTextEdit*>("txtLog")->document();
    const auto found = document->find(text);
    return found.charFormat();
}

QString MessagingFixture::panel(const MessageForm& window)
{
    return control<QLabel>(window, "StatusBar1Panel1").text();
}
