#include "messaging/forms/authorizeForm.h"

#include "contacts/Client.h"
#include "contacts/RosterStanzas.h"
#include "engine/Jid.h"
#include "ui_authorizeForm.h"

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
    ui_->lblUserName->setText(jid);
    ui_->lblUserName->setToolTip(jid.toHtmlEscaped());
    // Whoever asks must not push the server's name out of sight with a long one of their own.
    constexpr int widest = 760;
    const QMargins margins = ui_->rows->contentsMargins();
    const int needed =
        ui_->lblUserName->fontMetrics().horizontalAdvance(jid + u' ') + margins.left() + margins.right();
    resize(qBound(width(), needed, widest), height());
}

void authorizeForm::OnPresence(PlugInContext& context)
{
    Context = context;
    if (client_.settings.AuthAskForAll)
        return;
    if (client_.settings.AuthForAll)
        cmdAccept_Click();
    else if (client_.settings.AuthDenyAll)
        cmdDeny_Click();
}

void authorizeForm::cmdAccept_Click()
{
    if (!Context)
        return;
    auto& packet = Context->OutPacket();
    auto presence = packet.PresenceFields();
    presence.SetSubscribed();
    presence.setFrom(client_.ownBareJid());
    packet.Send();
    if (!client_.MyRoster.DoesJIDExist(Context->Stanza().From())) {
        presence.SetSubscribe();
        presence.setFrom(client_.ownBareJid());
        packet.Send();
    }
    requestUnload(CloseMode::Code);
}

void authorizeForm::cmdDeny_Click()
{
    if (!Context)
        return;
    auto presence = Context->OutPacket().PresenceFields();
    presence.SetUnsubscribed();
    presence.setFrom(client_.ownBareJid());
    Context->OutPacket().Send();
    requestUnload(CloseMode::Code);
}

void authorizeForm::cmdShowVCard_Click()
{
    stanzas::send(client_, stanzas::vCard(jid::bare(ui_->lblUserName->text())));
}
