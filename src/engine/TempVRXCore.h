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

    QPointer<QTimer> triggerTimer_;
    // The tick that was asked for. A timer rather than a queued call, which would come before every timer of
    // the windows: they have their turn between two ticks of a flood.
    QTimer nextTick_;
    bool inTick_ = false;
    // Work came since the last tick began.
    bool hasWork_ = false;
    // The last tick went to the gateway alone.
    bool dispatchIsDue_ = false;
};
