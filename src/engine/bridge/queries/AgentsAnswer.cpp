#include "engine/bridge/queries/AgentsAnswer.h"

#include "engine/Stanza.h"
#include "engine/Xml.h"

#include <QSet>

namespace
{

// Nobody needs more, and a server that lists the world mustn't make us ask all of it.
constexpr std::size_t mostServices = 200;

// The first identity, but a gateway's before any other: it decides what the client makes of the service.
disco::Identity mainIdentity(const disco::Info& info)
{
    for (const auto& identity : info.identities) {
        if (identity.category == QLatin1String("gateway"))
            return identity;
    }
    return info.identities.value(0);
}

QString oldService(const disco::Identity& identity)
{
    if (identity.category == QLatin1String("conference"))
        return QStringLiteral("public");
    return identity.category == QLatin1String("directory") ? QStringLiteral("jud") : identity.type;
}

QString flag(bool on, const char* element)
{
    return on ? QStringLiteral("<%1/>").arg(QLatin1String(element)) : QString();
}

} // namespace

void AgentsAnswer::setItems(const QList<disco::Item>& items)
{
    QSet<QString> seen;
    for (const auto& item : items) {
        if (!item.node.isEmpty() || seen.contains(item.jid) || agents_.size() == mostServices)
            continue;
        seen.insert(item.jid);
        agents_.push_back({item.jid, item.name.isEmpty() ? item.jid : item.name, {}, false, {}});
    }
}

void AgentsAnswer::describe(std::size_t index, const disco::Info& info)
{
    auto& agent = agents_[index];
    const auto identity = mainIdentity(info);
    const bool isRoom = info.hasIdentity(QStringLiteral("conference"), {}) ||
                        info.has(QStringLiteral("http://jabber.org/protocol/muc"));
    agent.isGateway = identity.category == QLatin1String("gateway");
    agent.service = oldService(identity);
    if (!identity.name.isEmpty())
        agent.name = identity.name;
    agent.flags = flag(info.has(QStringLiteral("jabber:iq:register")), "register") +
                  flag(info.has(QStringLiteral("jabber:iq:search")), "search") + flag(isRoom, "groupchat");
    ++described_;
}

// The client takes the first child for the name, and an agent whose text holds "transport" for a gateway.
QString AgentsAnswer::element(const Agent& agent)
{
    QString inner = QStringLiteral("<name>%1</name><service>%2</service>%3")
                        .arg(xml::escaped(agent.name), xml::escaped(agent.service), agent.flags);
    if (agent.isGateway)
        inner += QStringLiteral("<transport/>");
    else
        inner.replace(QLatin1String("transport"), QLatin1String("Transport"));
    return QStringLiteral("<agent jid=\"%1\">%2</agent>").arg(xml::escaped(agent.jid), inner);
}

std::shared_ptr<Stanza> AgentsAnswer::stanza() const
{
    QString inner;
    for (const auto& agent : agents_) {
        // An address can't be spelled otherwise, so such a service would be taken for a gateway.
        if (agent.isGateway || !agent.jid.contains(QLatin1String("transport")))
            inner += element(agent);
    }
    return Stanza::fromXml(QStringLiteral("<iq type=\"result\" id=\"%1\" from=\"%2\">"
                                          "<query xmlns=\"jabber:iq:agents\">%3</query></iq>")
                               .arg(xml::escaped(id_), xml::escaped(from_), inner));
}
