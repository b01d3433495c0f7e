#include "groupchat/forms/InviteForm.h"

#include "contacts/Client.h"
#include "contacts/RosterStanzas.h"
#include "engine/Jid.h"
#include "groupchat/RoomStanzas.h"
#include "messaging/OutboundMessage.h"
#include "messaging/forms/RoomWindow.h"
#include "ui_InviteForm.h"

#include <algorithm>

namespace
{

// The gateways' contacts can't enter a room.
bool isBehindGateway(const QString& jid, const SiteData& site)
{
    static constexpr QStringView gateways[] = {u"icq.", u"yim.", u"msn."};
    return std::ranges::any_of(
        gateways, [&](QStringView gateway) { return jid.contains(gateway.toString() + site.DefaultServer); });
}

} // namespace

InviteForm::InviteForm(FormRegistry& registry, Client& client)
    : Form(registry, QStringLiteral("InviteForm")), ui_(std::make_unique<Ui::InviteForm>()), client_(client)
{
    ui_->setupUi(this);
    fillContacts();
    fillRooms();
    setDefaultButton(ui_->Command1);
    setCancelButton(ui_->Command2);
    setEntry(ui_->Combo1);
    connect(ui_->Command1, &QPushButton::clicked, this, &InviteForm::Command1_Click);
    connect(ui_->Command2, &QPushButton::clicked, this, &QWidget::close);
}

InviteForm::~InviteForm() = default;

void InviteForm::fillContacts()
{
    for (int position = 1; position <= client_.MyRoster.Count(); ++position) {
        const auto& contact = *client_.MyRoster.Item(position);
        if (contact.Online && !contact.IsGateway && !isBehindGateway(contact.JID, client_.site))
            ui_->Combo1->addItem(contact.JID);
    }
    ui_->Combo1->setCurrentText({});
}

void InviteForm::fillRooms()
{
    for (auto* form : registry().loaded()) {
        if (qobject_cast<RoomWindow*>(form) && form->Tag.contains(u'@'))
            ui_->Combo2->addItem(form->Tag);
    }
}

void InviteForm::setContact(const QString& jid)
{
    ui_->Combo1->setCurrentText(jid);
    setEntry(ui_->txtMsg);
}

void InviteForm::setRoom(const QString& jid)
{
    if (ui_->Combo2->findText(jid) < 0)
        ui_->Combo2->addItem(jid);
    ui_->Combo2->setCurrentText(jid);
}

void InviteForm::Command1_Click()
{
    const QString room = ui_->Combo2->currentText();
    const bool known = ui_->Combo2->findText(room, Qt::MatchExactly | Qt::MatchCaseSensitive) >= 0;
    if (!send())
        return;
    if (!known && !room.contains(u'@'))
        return emit roomMisnamed();
    if (!known)
        emit joinRequested(room);
    close();
}

// An address that is none would only come back as an error.
bool InviteForm::send()
{
    const QString contact = ui_->Combo1->currentText().trimmed();
    if (!jid::isValid(contact)) {
        ui_->lblState->setText(
            tr("\"%1\" is not a Jabber address. It looks like user@server.").arg(contact.left(200)));
        ui_->Combo1->setFocus();
        return false;
    }
    const QString text = outbound::sendable(ui_->txtMsg->toPlainText());
    if (stanzas::send(client_, roomstanzas::invitation(contact, ui_->Combo2->currentText(), text)))
        return true;
    ui_->lblState->setText(tr("You are not connected. Nothing was sent."));
    return false;
}
