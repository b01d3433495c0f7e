#include "desktop/forms/SessionForm.h"

#include "engine/Session.h"

#include <utility>

SessionForm::~SessionForm()
{
    leaveBag();
}

void SessionForm::keepIn(SessionProperties& bag, const QString& key)
{
    leaveBag();
    bag_ = &bag;
    key_ = key;
    // Not deleted at once, since one of the window's own handlers may be under way, and not asked.
    auto letGo = [guard = QPointer<SessionForm>(this)](QObject*) {
        if (guard && std::exchange(guard->bag_, nullptr))
            guard->unloadNow();
    };
    bag.Add(std::shared_ptr<QObject>(this, letGo), key);
}

void SessionForm::unload()
{
    leaveBag();
}

void SessionForm::leaveBag()
{
    auto* bag = std::exchange(bag_, nullptr);
    if (bag && bag->Item(key_) == this)
        bag->Remove(key_);
}
