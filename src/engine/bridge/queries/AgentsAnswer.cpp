#include "engine/bridge/queries/AgentsAnswer.h"

#include "engine/Stanza.h"
#include "engine/Xml.h"

#include <QSet>

namespace
{

// Nobody needs more, and a server that lists the world mustn't make us ask all of it.
constexpr std::size_t mostServices = 200;

bool hasCategory(const disco::Info& info, const QString& category)
{
    return info.hasIdentity(category, {});
}

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
        agents_.push_back({item, {}});
    }
}

void AgentsAnswer::describe(std::size_t index, disco::Info info)
{
    agents_[index].info = std::move(info);
    ++described_;
}

// The client takes the first child for the name, and an agent whose text holds "transport" for a gateway.
QString AgentsAnswer::element(const Agent& agent)
{
    const auto identity = mainIdentity(agent.info);
    const bool isGateway = identity.category == QLatin1String("gateway");
    QString name = !identity.name.isEmpty() ? identity.name : agent.item.name;
    if (name.isEmpty())
        name = agent.item.jid;
    const bool isRoom = hasCategory(agent.info, QStringLiteral("conference")) ||
                        agent.info.has(QStringLiteral("http://jabber.org/protocol/muc"));
    QString inner = QStringLiteral("<name>%1</name><service>%2</service>")
                        .arg(xml::escaped(name), xml::escaped(oldService(identity)));
    inner += flag(agent.info.has(QStringLiteral("jabber:iq:register")), "register");
    inner += flag(agent.info.has(QStringLiteral("jabber:iq:search")), "search");
    inner += flag(isRoom, "groupchat");
    if (isGateway)
        inner += QStringLiteral("<transport/>");
    else
        inner.replace(QLatin1String("transport"), QLatin1String("Transport"));
    return QStringLiteral("<agent jid=\"%1\">%2</agent>").arg(xml::escaped(agent.item.jid), inner);
}

std::shared_ptr<Stanza> AgentsAnswer::stanza() const
{
    QString inner;
    for (const auto& agent : agents_) {
        const bool isGateway = hasCategory(agent.info, QStringLiteral("gateway"));
        // An address can't be spelled otherwise, so such a service would be taken for a gateway.
        if (isGateway || !agent.item.jid.contains(QLatin1String("transport")))
            inner += element(agent);
    }
    return Stanza::fromXml(QStringLiteral("<iq type=\"result\" id=\"%1\" from=\"%2\">"
                                          "<query xmlns=\"jabber:iq:agents\">%3</query></iq>")
                               .arg(xml::escaped(id_), xml::escaped(from_), inner));
}
