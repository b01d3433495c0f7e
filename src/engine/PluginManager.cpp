#include "engine/PluginManager.h"

#include "engine/ApplicationPlugIn.h"
#include "engine/Jid.h"
#include "engine/StanzaQueue.h"

#include <QElapsedTimer>

namespace
{

// So that a flood leaves the windows alive: a tick ends after this time, whatever still waits.
constexpr qint64 tickBudgetMs = 20;

} // namespace

PluginManager::PluginManager() : queue_(std::make_shared<StanzaQueue>()) {}
PluginManager::~PluginManager() = default;

void PluginManager::PlugIn(ApplicationPlugIn* plugIn, ITriggerReceiver* receiver)
{
    plugIn_ = plugIn;
    receiver_ = receiver;
}

void PluginManager::ApplicationInit()
{
    if (!plugIn_)
        return;
    PlugInContext application(queue_, Stanza::notice(""), std::make_shared<Session>(QString(), nullptr));
    plugIn_->ApplicationOnStart(application);
}

void PluginManager::beginAccount(const QString& bareJid)
{
    if (account_ != bareJid)
        sessions_.clear();
    account_ = bareJid;
}

void PluginManager::Trigger()
{
    QElapsedTimer clock;
    clock.start();
    while (plugIn_ && clock.elapsed() < tickBudgetMs) {
        auto stanza = queue_->takeInbound();
        if (!stanza)
            break;
        dispatch(std::move(stanza));
    }
    if (queue_->inboundCount() > 0)
        queue_->wakeUp();
    if (receiver_)
        receiver_->Trigger();
}

void PluginManager::dispatch(std::shared_ptr<Stanza> stanza)
{
    const auto kind = stanza->kind();
    bool begun = false;
    const auto peer = jid::bare(stanza->isReturned() ? stanza->To() : stanza->From());
    auto session = sessions_.session(peer, &begun);
    PlugInContext context(queue_, std::move(stanza), std::move(session));
    if (begun)
        plugIn_->SessionOnStart(context);
    switch (kind) {
    case Stanza::Kind::Iq:
        return plugIn_->OnIQ(context);
    case Stanza::Kind::Message:
        return plugIn_->OnMessage(context);
    case Stanza::Kind::Presence:
        return plugIn_->OnPresence(context);
    case Stanza::Kind::Other:
        return plugIn_->OnRawXML(context);
    case Stanza::Kind::Unsent:
    case Stanza::Kind::Uncertain:
        return plugIn_->OnReturned(context);
    }
}
