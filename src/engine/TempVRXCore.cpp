#include "engine/TempVRXCore.h"

TempVRXCore::TempVRXCore(std::unique_ptr<::Gateway> gateway)
    : Gateway(std::move(gateway)), PluginManager(std::make_unique<::PluginManager>())
{
    Gateway->setQueue(PluginManager->Queue());
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
    if (triggerTimer_)
        triggerTimer_->stop();
    const QPointer<TempVRXCore> self(this);
    Gateway->Trigger();
    if (self)
        PluginManager->Trigger();
    if (!self)
        return;
    if (triggerTimer_)
        triggerTimer_->start();
    inTick_ = false;
}
