#pragma once

#include "messaging/ConversationLog.h"
#include "messaging/Stamps.h"

#include <QObject>
#include <QString>

class FormRegistry;
class MessageForm;
struct Client;

// What all message windows share and wish for: the log, the time stamps, and the wishes that others fulfil.
class ConversationHost : public QObject
{
    Q_OBJECT

public:
    // Both must outlive the host, and the host its windows.
    ConversationHost(FormRegistry& registry, Client& client);

    // The next message is the client's own opening message, and says nothing.
    bool IsTrick = false;

    Client& client() const { return client_; }
    ConversationLog& log() { return log_; }
    Stamps& stamps() { return stamps_; }
    // Shows one box when writing logs begins to fail, and no more until a write succeeds again.
    void reportLog(const QString& error);
    // Opens the reader on a peer's log.
    void ShowMessageLog(const QString& peer);

signals:
    // The vCard window is to belong to this JID; the request is on its way.
    void vCardRequested(const QString& jid);
    void inviteRequested(const QString& jid);
    void callRequested(MessageForm* window);
    // A contact was blocked: the contact tree is to be drawn anew.
    void rosterRefreshRequested();

protected:
    FormRegistry& registry_;
    Client& client_;
    Stamps stamps_;
    ConversationLog log_;

private:
    bool logFailureTold_ = false;
};
