#include "engine/TempVRXCore.h"

#include "engine/StanzaQueue.h"

#include <QElapsedTimer>

#include <utility>

namespace
{

// A gateway that took so long has had its tick: the windows have a turn before its stanzas are dispatched.
constexpr qint64 longMs = 15;

} // namespace

TempVRXCore::TempVRXCore(std::unique_ptr<::Gateway> gateway)
    : Gateway(std::move(gateway)), PluginManager(std::make_unique<::PluginManager>())
{
    Gateway->setQueue(PluginManager->Queue());
    nextTick_.setSingleShot(true);
    connect(&nextTick_, &QTimer::timeout, this, &TempVRXCore::tick);
    PluginManager->Queue()->setWakeUp([this] { wakeUp(); });
}

// Contexts may hold the queue for longer.
TempVRXCore::~TempVRXCore()
{
    PluginManager->Queue()->setWakeUp({});
}

void TempVRXCore::setTriggerTimer(QTimer* timer)
{
    triggerTimer_ = timer;
    connect(timer, &QTimer::timeout, this, &TempVRXCore::tick);
}

void TempVRXCore::tick()
{
    if (inTick_)
        return;
    inTick_ = true;
    hasWork_ = false;
    if (triggerTimer_)
        triggerTimer_->stop();
    const QPointer<TempVRXCore> self(this);
    if (!std::exchange(dispatchIsDue_, false)) {
        QElapsedTimer clock;
        clock.start();
        Gateway->Trigger();
        if (!self)
            return;
        dispatchIsDue_ = clock.elapsed() >= longMs;
    }
    if (dispatchIsDue_)
        hasWork_ = true;
    else
        PluginManager->Trigger();
    if (!self)
        return;
    if (triggerTimer_)
        triggerTimer_->start();
    inTick_ = false;
    if (hasWork_)
        nextTick_.start();
}

void TempVRXCore::wakeUp()
{
    hasWork_ = true;
    if (!inTick_ && !nextTick_.isActive())
        nextTick_.start();
}
