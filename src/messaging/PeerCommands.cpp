#include "messaging/PeerCommands.h"

#include "contacts/BlockedContacts.h"
#include "contacts/Client.h"
#include "contacts/RosterStanzas.h"

#include <QCoreApplication>

namespace
{

QString tr(const char* text)
{
    return QCoreApplication::translate("PeerCommands", text);
}

} // namespace

bool PeerCommands::addContact(const QString& jid)
{
    if (!askContact(jid))
        return false;
    client_.desktop.boxes->information(tr("Notification"), submitted());
    return true;
}

bool PeerCommands::askContact(const QString& jid)
{
    auto& boxes = *client_.desktop.boxes;
    if (client_.MyRoster.DoesJIDExist(jid) || client_.MyRoster.DoesJIDExist(jid.toLower())) {
        boxes.exclamation(tr("Error"), tr("This Contact is already in your Contact List"));
        return false;
    }
    if (!request(jid)) {
        boxes.exclamation(tr("Error"), tr("Your request was not sent: there is no connection."));
        return false;
    }
    return true;
}

QString PeerCommands::submitted()
{
    return tr("Your request has been submitted; waiting for a reply from your friend, the contact "
              "will be placed in a group called \"Waiting authorization\"");
}

bool PeerCommands::request(const QString& jid)
{
    if (!client_.isConnected() || !stanzas::send(client_, stanzas::addContact(jid)))
        return false;
    auto& packet = client_.Application->OutPacket();
    packet.Clear();
    auto presence = packet.PresenceFields();
    presence.SetSubscribe();
    presence.setTo(jid);
    presence.setFrom(client_.ownBareJid());
    return packet.Send();
}

bool PeerCommands::block(const QString& jid)
{
    auto& boxes = *client_.desktop.boxes;
    BlockedContacts blocked(client_);
    if (blocked.contains(jid)) {
        boxes.information(tr("Note !"), tr("The Contact is already Blocked!"));
        return false;
    }
    const auto answer = boxes.show(tr("Confirm"), tr("Are you sure that you want to Block this Contact"),
                                   MessageBoxes::Icon::Question, MessageBoxes::Buttons::NoYesCancel);
    if (answer != MessageBoxes::Answer::Yes)
        return false;
    const QString error = blocked.add(jid);
    if (!error.isEmpty())
        boxes.exclamation(tr("Error"), error);
    return true;
}

void PeerCommands::requestVCard(const QString& jid)
{
    stanzas::send(client_, stanzas::vCard(jid));
}
