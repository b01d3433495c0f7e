#pragma once

#include "engine/ITriggerReceiver.h"
#include "engine/PlugInContext.h"

#include <chrono>
#include <memory>

class ApplicationPlugIn;
class StanzaQueue;

// Hands the received stanzas to the one registered plug-in, within a time budget a tick, and keeps the
// sessions.
class PluginManager : public ITriggerReceiver
{
public:
    PluginManager();
    ~PluginManager() override;

    std::shared_ptr<StanzaQueue> Queue() const { return queue_; }
    // `receiver` is triggered once a tick, after the events; not owned, nor is `plugIn`.
    void PlugIn(ApplicationPlugIn* plugIn, ITriggerReceiver* receiver);
    void SessionDescriptor(int value) { sessionDescriptor_ = value; }
    // Calls ApplicationOnStart on the plug-in, with the context for sends outside events.
    void ApplicationInit();

    void Trigger() override;

    SessionTable& sessions() { return sessions_; }
    // The session of the account's own begins: bags of another account are forgotten, those of this one stay.
    void beginAccount(const QString& bareJid);

private:
    void dispatch(std::shared_ptr<Stanza> stanza);

    std::shared_ptr<StanzaQueue> queue_;
    SessionTable sessions_;
    QString account_;
    ApplicationPlugIn* plugIn_ = nullptr;
    ITriggerReceiver* receiver_ = nullptr;
    int sessionDescriptor_ = 0;
};
