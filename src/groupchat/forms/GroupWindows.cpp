#include "groupchat/forms/GroupWindows.h"

#include "contacts/Client.h"
#include "groupchat/forms/InviteForm.h"
#include "groupchat/forms/JoinConferenceForm.h"
#include "messaging/forms/MessageWindows.h"

namespace
{

const QString joinName = QStringLiteral("JoinConferenceForm");

} // namespace

GroupWindows::GroupWindows(FormRegistry& registry, Client& client, MessageWindows& messages)
    : rooms(registry, client, messages.hub), registry_(registry), client_(client), messages_(messages)
{
    rooms.nick = [this] {
        const auto* form = joinIfLoaded();
        return form ? form->nick() : client_.Gateway().UserName();
    };
    connect(&rooms, &GroupChatWindow::told, this, &GroupWindows::told);
    connect(&rooms, &GroupChatWindow::inviteRequested, this,
            [this](const QString& room) { showInvite({}, room); });
    connect(&rooms, &GroupChatWindow::privateChatRequested, this, [this](const QString& occupant) {
        messages_.hub.IsTrick = true;
        messages_.hub.SendMessageFromConference(occupant, client_.ownFullJid());
    });
}

JoinConferenceForm* GroupWindows::joinIfLoaded() const
{
    return qobject_cast<JoinConferenceForm*>(registry_.find(joinName));
}

JoinConferenceForm& GroupWindows::join()
{
    return registry_.single<JoinConferenceForm>(
        joinName, [this] { return new JoinConferenceForm(registry_, client_); });
}

void GroupWindows::showJoin()
{
    if (!client_.isConnected())
        return emit told(tr("You are not connected."));
    join().bringUp();
}

void GroupWindows::showInvitation(const RoomInvitation& invitation)
{
    join().openInvitation(invitation);
}

void GroupWindows::showInvite(const QString& contact, const QString& room)
{
    auto& form = registry_.single<InviteForm>(QStringLiteral("InviteForm"), [this] {
        auto* made = new InviteForm(registry_, client_);
        connect(made, &InviteForm::roomMisnamed, this, [this] {
            messages_.writeNotice(QStringLiteral("BreloIM"),
                                  tr("Conference's name is not right or bad formatted!"), tr("Error!"));
        });
        connect(made, &InviteForm::joinRequested, this, [this](const QString& room) {
            join().nameRoom(room);
            join().cmdJoin_Click();
        });
        return made;
    });
    if (!contact.isEmpty())
        form.setContact(contact);
    if (!room.isEmpty())
        form.setRoom(room);
    form.bringUp();
}

void GroupWindows::OnRooms(PlugInContext& context)
{
    if (auto* form = joinIfLoaded())
        form->browser().OnIQ(context);
}
