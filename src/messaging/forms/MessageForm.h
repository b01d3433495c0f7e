#pragma once

#include "engine/PlugInContext.h"
#include "messaging/OutboundMessage.h"
#include "messaging/PeerCommands.h"
#include "messaging/forms/ConversationForm.h"
#include "messaging/forms/ResourceControls.h"

#include <QString>
#include <QTimer>

#include <memory>
#include <optional>

namespace Ui
{
class MessageForm;
}
class ConversationHost;
class ReturnedMessages;
class StatusPanel;
class TranscriptView;
struct Client;

// The conversation with one peer, or with one occupant of a room. Windows are made by the hub. One that is
// kept in its session's bag only hides when it is closed, and returns with its transcript and its unsent
// text.
class MessageForm : public ConversationForm
{
    Q_OBJECT

public:
    // The hub must outlive its windows.
    MessageForm(FormRegistry& registry, ConversationHost& hub);
    ~MessageForm() override;

    // The context of the last message; the window sends through its packet.
    std::optional<PlugInContext> Context;
    // The line being written is the person's own.
    bool OwnMessage = false;

    // Appends one line to the transcript, `body` from the sender; an own line goes to the log as well.
    void WriteMessage(const MessageFields& fields, const QString& body);
    // A message that was shown as sent came back.
    void showReturned(const QString& body, bool uncertain);
    // Asks for a call with the peer.
    void mnustrsendfile_Click();
    // Opens the mail client on the transcript, addressed as the person types.
    void sendByEmail();

    // The JID that messages go to, also as shown.
    void setPeer(const QString& jid);
    // Whom the commands act on, in a window that can't answer.
    void setSender(const QString& jid);
    void setNick(const QString& nick);
    void setStatusText(const QString& text);
    // A key of the shared image list.
    void setPicture(const QString& imageKey);
    void setCanAdd(bool on);
    // Panel 1 of the status bar.
    void setPanelText(const QString& text);
    // Says there that the peer is typing: until another text comes, the peer stops, or a minute is over.
    void showTyping(const QString& from);
    void endTyping();
    void focusEntry();
    // Where messages and commands go: the JID without the chosen resource.
    QString peerJid() const;
    // The same with the chosen resource.
    QString target() const;
    ResourceControls& resources() { return *resources_; }

public slots:
    void cmdSend_Click();
    void txtMsg_Change();
    void mnuToolsNoChar13_Click();
    void mnuToolsAdd_Click();
    void mnustrblock_Click();
    void mnustroldconv_Click();
    void mnustrDelHistory_Click();
    void mnustrvcard_Click();
    void mnustrincchgr_Click();

protected:
    bool queryUnload(CloseMode mode) override;
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    // The commands that need a connection are off without one.
    void refreshCommands();
    bool tellUnlessConnected();
    void setUpToolbar();
    void setUpEditing();
    void connectMenus();
    // False, with a word in the status line, when the text didn't go out.
    bool send(const QString& text);
    Client& client() const;

    std::unique_ptr<Ui::MessageForm> ui_;
    ConversationHost& hub_;
    PeerCommands commands_;
    TypingRules typing_;
    std::unique_ptr<ResourceControls> resources_;
    ReturnedMessages* returned_;
    StatusPanel* panel_;
    QString picture_;
    bool canAdd_ = false;
    QString panelText_ = QLatin1String("");
    QString beforeTyping_; // what the panel said; null while nobody types
    QTimer typingEnd_;
};
