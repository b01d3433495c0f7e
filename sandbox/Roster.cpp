#include "sandbox/Roster.h"

#include "sandbox/Address.h"

namespace sandbox
{

QString RosterItem::subscription() const
{
    if (to && from)
        return QStringLiteral("both");
    return to ? QStringLiteral("to") : from ? QStringLiteral("from") : QStringLiteral("none");
}

void RosterItem::setSubscription(const QString& word)
{
    to = word == u"to" || word == u"both";
    from = word == u"from" || word == u"both";
}

Element RosterItem::element() const
{
    Element item("item");
    item.set("jid", jid).option("name", name).set("subscription", subscription());
    if (pendingOut)
        item.set("ask", QStringLiteral("subscribe"));
    for (const auto& group : groups)
        item.add("group", group);
    return item;
}

RosterItem* Roster::find(const QString& bareJid)
{
    const auto place = places_.constFind(bareJid);
    return place == places_.cend() ? nullptr : &items_[*place];
}

const RosterItem* Roster::find(const QString& bareJid) const
{
    return const_cast<Roster*>(this)->find(bareJid);
}

RosterItem& Roster::item(const QString& bareJid)
{
    if (auto* known = find(bareJid))
        return *known;
    places_.insert(bareJid, items_.size());
    RosterItem fresh;
    fresh.jid = bareJid;
    items_.append(fresh);
    return items_.last();
}

void Roster::remove(const QString& bareJid)
{
    const auto place = places_.constFind(bareJid);
    if (place == places_.cend())
        return;
    items_.removeAt(*place);
    reindex();
}

void Roster::adoptHost(const QString& host)
{
    for (auto& item : items_)
        item.jid = address::rehosted(item.jid, host, Host);
    reindex();
}

void Roster::reindex()
{
    places_.clear();
    for (qsizetype place = 0; place < items_.size(); ++place)
        places_.insert(items_.at(place).jid, place);
}

} // namespace sandbox
