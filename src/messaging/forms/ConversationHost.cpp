#include "messaging/forms/ConversationHost.h"

#include "contacts/Client.h"
#include "messaging/forms/LogMessageForm.h"

#include <utility>

ConversationHost::ConversationHost(FormRegistry& registry, Client& client)
    : registry_(registry), client_(client), stamps_(*client.desktop.clock), log_(client, stamps_)
{
}

void ConversationHost::reportLog(const QString& error)
{
    if (error.isEmpty()) {
        logFailureTold_ = false;
    } else if (!std::exchange(logFailureTold_, true)) {
        client_.desktop.boxes->exclamation(tr("Message Log"), error);
    }
}

void ConversationHost::ShowMessageLog(const QString& peer)
{
    (new LogMessageForm(registry_, client_))->ShowMessageLog(log_, peer);
}
