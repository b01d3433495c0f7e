#pragma once

#include "engine/Gateway.h"
#include "engine/PluginManager.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>

// Holds the two engine objects, joins them by their queue and pumps them: from a timer, and as soon as the
// queue has work for them.
class TempVRXCore : public QObject
{
    Q_OBJECT

public:
    explicit TempVRXCore(std::unique_ptr<::Gateway> gateway);
    ~TempVRXCore() override;

    std::unique_ptr<::Gateway> Gateway;
    std::unique_ptr<::PluginManager> PluginManager;

    // The pump; not owned.
    QTimer* TriggerTimer() const { return triggerTimer_; }
    void setTriggerTimer(QTimer* timer);
    // One tick. The timer is off meanwhile: a handler may run a nested event loop, and a tick must not enter
    // the engine a second time.
    void tick();

private:
    void wakeUp();
    void queueTick();

    QPointer<QTimer> triggerTimer_;
    bool inTick_ = false;
    // Work came since the last tick began; and a tick is on its way through the event loop.
    bool hasWork_ = false;
    bool isTickQueued_ = false;
};
