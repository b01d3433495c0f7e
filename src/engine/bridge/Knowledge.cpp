#include "engine/bridge/Knowledge.h"

#include <algorithm>
#include <utility>

void Knowledge::begin()
{
    entries_.clear();
    foreign_.clear();
}

void Knowledge::learn(const QString& address)
{
    const auto key = home_.key(address);
    auto* const known = entry(key);
    if (!known || known->service.kind != Kind::Unknown)
        return;
    known->service.kind = Kind::Asked;
    exchange_.ask({.to = key.isEmpty() ? home_.server() : address, .payload = disco::infoQuery},
                  [this, key](const Exchange::Answer& answer) { learnt(key, answer); });
}

void Knowledge::learnt(const QString& key, const Exchange::Answer& answer)
{
    auto& entry = entries_[key];
    auto info = disco::Info::read(answer.result());
    const auto kind = info.isEmpty() ? Kind::Old : Kind::OfToday;
    entry.service = {kind, std::move(info), answer.error};
    // A step may learn of others, and so move this entry.
    const auto service = entry.service;
    for (const auto& step : std::exchange(entry.waiting, {}))
        step(service);
}

void Knowledge::whenKnown(const QString& address, const Step& step)
{
    learn(address);
    auto* const asked = entry(home_.key(address));
    if (!asked)
        step({Kind::Old, {}, {504, {}}});
    else if (asked->service.kind == Kind::Asked)
        asked->waiting.push_back(step);
    else
        step(Service(asked->service));
}

void Knowledge::refuse(const QString& address, const QByteArray& ns)
{
    if (auto* const known = entry(home_.key(address)))
        known->refused << ns;
}

const Knowledge::Entry* Knowledge::find(const QString& address) const
{
    const auto found = entries_.constFind(home_.key(address));
    return found == entries_.cend() ? nullptr : &*found;
}

Knowledge::Service Knowledge::at(const QString& address) const
{
    const auto* found = find(address);
    return found ? found->service : Service();
}

bool Knowledge::homeIsOfToday() const
{
    const auto* found = find({});
    return found && found->service.kind == Kind::OfToday;
}

bool Knowledge::isRefused(const QString& address, const QByteArray& ns) const
{
    const auto* found = find(address);
    return found && found->refused.contains(ns);
}

Knowledge::Entry* Knowledge::entry(const QString& key)
{
    if (!key.isEmpty() && !entries_.contains(key)) {
        if (!makeRoom())
            return nullptr;
        foreign_ << key;
    }
    return &entries_[key];
}

// Whoever makes us meet ever more addresses doesn't fill the memory. One that is being asked stays: somebody
// waits for it.
bool Knowledge::makeRoom()
{
    if (foreign_.size() < mostForeign)
        return true;
    const auto isFree = [this](const QString& key) { return entries_[key].service.kind != Kind::Asked; };
    const auto oldest = std::find_if(foreign_.begin(), foreign_.end(), isFree);
    if (oldest == foreign_.end())
        return false;
    entries_.remove(*oldest);
    foreign_.erase(oldest);
    return true;
}
