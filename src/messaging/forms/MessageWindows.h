#pragma once

#include "messaging/forms/AuthorizationRequests.h"
#include "messaging/forms/ChatWindow.h"

class HeadLineForm;

// The room's face: the hub of the conversations, the one notices window, made at first use, and a window for
// each request to see the own presence.
class MessageWindows : public QObject, public ApplicationPlugIn
{
    Q_OBJECT

public:
    // Both must outlive the object, and the object its windows.
    MessageWindows(FormRegistry& registry, Client& client);

    ChatWindow hub;

    HeadLineForm& notices();
    // Notices that come by themselves don't take the focus; those that the person asks for do.
    void showNotices();
    // What is for the notices window: a headline or an error, with its sound; and a presence of type error or
    // close.
    void OnMessage(PlugInContext& context) override;
    void OnPresence(PlugInContext& context) override;
    // A line of the client's own there.
    void writeNotice(const QString& from, const QString& body, const QString& subject);
    // Answers the request of the context, or asks the person in a window.
    void askAuthorization(PlugInContext& context) { requests_.take(context); }
    // The opening message counts as a trick, or as a contact's own.
    void openConversation(const QString& jid, bool trick);

signals:
    // The server has ended the session.
    void connectionLost();

private:
    FormRegistry& registry_;
    Client& client_;
    AuthorizationRequests requests_;
};
