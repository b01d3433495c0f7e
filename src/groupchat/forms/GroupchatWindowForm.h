#pragma once

#include "engine/PlugInContext.h"
#include "groupchat/Occupants.h"
#include "messaging/forms/RoomWindow.h"

#include <QDateTime>

#include <memory>
#include <optional>

namespace Ui
{
class GroupchatWindowForm;
}
class ConversationHost;
class StatusPanel;
struct Client;
struct StanzaError;

// The window of one conference room: what is said, who is there, and the person's own doings in it. Its Tag
// is the room's JID. When it is closed the room is told, and the window only hides until the room has
// confirmed.
class GroupchatWindowForm : public RoomWindow
{
    Q_OBJECT

public:
    // The host must outlive the window.
    GroupchatWindowForm(FormRegistry& registry, ConversationHost& host);
    ~GroupchatWindowForm() override;

    Occupants occupants;
    // The context of the answer that opened the room.
    std::optional<PlugInContext> RoomContext;

    // The own address and present nick in the room, empty before the entry.
    const QString& ownId() const { return ownId_; }
    QString ownNick() const;
    QString nickOf(const QString& occupant) const override;
    void setOwnEntry(const QString& id, const QString& nick);
    // The occupant at the position goes by another nick.
    void rename(int position, const QString& nick);
    // A position in the box of the own status.
    void setOwnStatus(int position);
    void setSubject(const QString& text);

    // The three kinds of lines; a null time is the present.
    void writeStatus(const QString& text, const QDateTime& written = {});
    void writeAction(const QString& text);
    void writeMessage(const QString& nick, const QString& body, const QDateTime& written);
    // A line that was said and came back.
    void writeReturned(const QString& body, bool uncertain);
    // The room refuses a request. Before the entry nothing is said in it any more.
    void refuse(const StanzaError& error);
    // The status bar.
    void tell(const QString& text);

    QString draft() const;
    void setDraft(const QString& text);
    // Whether the room was told, at least so long ago, that the person goes, and has not confirmed.
    // Milliseconds.
    bool hasLeftFor(int milliseconds) const;

    // Does nothing: the list sorts itself.
    void SortList() {}

public slots:
    void Command1_Click();
    void Command2_Click();
    void mnugroupcr_Click();
    void mnucontattichnick_Click();
    void mnucontattichat_Click();
    void Status_Click();

signals:
    void privateChatRequested(const QString& occupant);
    void inviteRequested(const QString& room);
    // The window is hidden, and can't be brought back.
    void left();
    // The window goes; what was typed and not sent is still in it.
    void leaving();

protected:
    bool queryUnload(CloseMode mode) override;
    void unload() override;

private:
    void setUpHistory();
    void setUpEntry();
    void setUpOccupants();
    void connectMenus();
    void sendLine();
    // False when the text didn't go out.
    bool say(const QString& text);
    // Begin the application's packet anew.
    MessageFields newMessage() const; // to the room
    PresenceFields newPresence(const QString& to) const;
    // False, with a word in the status bar, when it didn't go out.
    bool sendPacket();
    Client& client() const;

    std::unique_ptr<Ui::GroupchatWindowForm> ui_;
    ConversationHost& host_;
    StatusPanel* panel_;
    QString ownId_;
    bool refused_ = false;
    QDateTime left_; // when the room was told that the person goes; null before
};
