#pragma once

#include "groupchat/forms/GroupChatWindow.h"

class InviteForm;
class JoinConferenceForm;
class MessageWindows;
struct RoomInvitation;

// The room's face: the hub of the conference rooms, the dialog that finds and joins them, and the one that
// invites, each made at first use.
class GroupWindows : public QObject
{
    Q_OBJECT

public:
    // All must outlive the object, and the object its windows.
    GroupWindows(FormRegistry& registry, Client& client, MessageWindows& messages);

    GroupChatWindow rooms;

    void showJoin();
    // Either may be empty.
    void showInvite(const QString& contact, const QString& room);
    void showInvitation(const RoomInvitation& invitation);
    // An answer for the list of rooms, dropped when nobody looks at it any more.
    void OnRooms(PlugInContext& context);

signals:
    // A word on what happened, for the main window.
    void told(const QString& sentence);

private:
    JoinConferenceForm& join();
    JoinConferenceForm* joinIfLoaded() const;

    FormRegistry& registry_;
    Client& client_;
    MessageWindows& messages_;
};
