#pragma once

#include "engine/ApplicationPlugIn.h"

#include <QHash>
#include <QObject>
#include <QPoint>
#include <QString>

#include <functional>
#include <optional>

class ChatWindow;
class FormRegistry;
class GroupchatWindowForm;
class Stanza;
struct Client;

// The hub of all room windows: turns the stanzas of conference rooms (jabber:iq:conference) into what the
// windows show. A room's window lies in the bag of the room's session.
class GroupChatWindow : public QObject, public ApplicationPlugIn
{
    Q_OBJECT

public:
    // All must outlive the hub, and the hub its windows.
    GroupChatWindow(FormRegistry& registry, Client& client, ChatWindow& conversations);

    ApplicationPlugIn* Myapplicationplugin() { return this; }
    // The nick for the room that is being entered.
    std::function<QString()> nick;

    void OnIQ(PlugInContext& context) override;
    void OnPresence(PlugInContext& context) override;
    void OnMessage(PlugInContext& context) override;
    void OnReturned(PlugInContext& context) override;

signals:
    void privateChatRequested(const QString& occupant);
    void inviteRequested(const QString& room);
    // A room that was asked for can't be entered.
    void entryRefused(const QString& sentence);

private:
    // What a room's window leaves behind for the next one, until the program ends.
    struct Memory {
        std::optional<QPoint> place; // of the frame
        QString draft;
    };

    // The session went on with this stanza: there is nothing left to do.
    enum class Walk { GoesOn, Ended };

    Walk walkMembers(PlugInContext& context);
    void closeRoom(PlugInContext& context, GroupchatWindowForm& room);
    void onRoom(PlugInContext& context);
    void onOwnEntry(const PlugInContext& context);
    void onError(PlugInContext& context);
    void giveUpLeaving(const PlugInContext& context);
    void enter(PlugInContext& context, const QString& caption);
    GroupchatWindowForm& makeRoom(const PlugInContext& context, const QString& caption);
    void markIfNamed(GroupchatWindowForm& room, const Stanza& message);
    void log(const QString& room, const QString& nick, const QString& text);

    FormRegistry& registry_;
    Client& client_;
    ChatWindow& conversations_;
    QHash<QString, Memory> memory_; // by account and room
};
