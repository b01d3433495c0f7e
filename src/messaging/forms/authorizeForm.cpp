#include "messaging/forms/authorizeForm.h"

#include "contacts/Client.h"
#include "contacts/RosterStanzas.h"
#include "engine/Jid.h"
#include "ui_authorizeForm.h"

namespace
{

void send(const Client& client, const QString& to, void (PresenceFields::*type)())
{
    auto& packet = client.Application->OutPacket();
    packet.Clear();
    auto presence = packet.PresenceFields();
    presence.setFrom(client.ownBareJid());
    presence.setTo(to);
    (presence.*type)();
    packet.Send();
}

// Whoever isn't in the contact list is asked back.
void accept(const Client& client, const QString& from)
{
    send(client, from, &PresenceFields::SetSubscribed);
    if (!client.MyRoster.DoesJIDExist(from))
        send(client, from, &PresenceFields::SetSubscribe);
}

void deny(const Client& client, const QString& from)
{
    send(client, from, &PresenceFields::SetUnsubscribed);
}

} // namespace

authorizeForm::authorizeForm(FormRegistry& registry, Client& client)
    : Form(registry, QStringLiteral("authorizeForm")), ui_(std::make_unique<Ui::authorizeForm>()),
      client_(client)
{
    ui_->setupUi(this);
    // A key that was meant for another window answers nothing.
    setAttribute(Qt::WA_ShowWithoutActivating);
    ui_->centralwidget->setFocusPolicy(Qt::StrongFocus);
    ui_->centralwidget->setAccessibleName(windowTitle());
    ui_->centralwidget->setFocus();
    resize(width(), sizeHint().height());
    connect(ui_->cmdAccept, &QPushButton::clicked, this, &authorizeForm::cmdAccept_Click);
    connect(ui_->cmdDeny, &QPushButton::clicked, this, &authorizeForm::cmdDeny_Click);
    connect(ui_->cmdShowVCard, &QPushButton::clicked, this, &authorizeForm::cmdShowVCard_Click);
}

authorizeForm::~authorizeForm() = default;

void authorizeForm::setUserName(const QString& jid)
{
    constexpr qsizetype longest = 3071; // characters of a JID (RFC 7622)
    ui_->lblUserName->setText(jid.left(longest));
    ui_->lblUserName->setToolTip(jid.left(longest).toHtmlEscaped()); // which may be markup
    ui_->lblUserName->setAccessibleDescription(tr("Who asks"));
    // Whoever asks must not push the server's name out of sight with a long one of their own.
    constexpr int widest = 760;
    const QMargins margins = ui_->rows->contentsMargins();
    const int needed = ui_->lblUserName->fontMetrics().horizontalAdvance(ui_->lblUserName->text() + u' ') +
                       margins.left() + margins.right();
    resize(qBound(width(), needed, widest), height());
}

void authorizeForm::setRequest(const QString& from)
{
    from_ = from;
    setUserName(from);
}

bool authorizeForm::answerBySettings(const Client& client, const QString& from)
{
    const auto& settings = client.settings;
    if (settings.AuthAskForAll || !(settings.AuthForAll || settings.AuthDenyAll))
        return false;
    settings.AuthForAll ? accept(client, from) : deny(client, from);
    return true;
}

void authorizeForm::cmdAccept_Click()
{
    if (from_.isEmpty())
        return;
    accept(client_, from_);
    requestUnload(CloseMode::Code);
}

void authorizeForm::cmdDeny_Click()
{
    if (from_.isEmpty())
        return;
    deny(client_, from_);
    requestUnload(CloseMode::Code);
}

void authorizeForm::cmdShowVCard_Click()
{
    stanzas::send(client_, stanzas::vCard(jid::bare(ui_->lblUserName->text())));
}
