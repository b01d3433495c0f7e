#include "sandbox/Flood.h"

#include "sandbox/Address.h"

#include <algorithm>
#include <array>

namespace sandbox::flood
{
namespace
{

constexpr int ChunkStanzas = 64;

QStringList contactsOf(World& world, const Connection& client)
{
    QStringList jids;
    for (const auto& item : world.account(client.user())->roster.items())
        jids += item.jid + QStringLiteral("/Home");
    return jids;
}

// Chunks of what `make` gives for 0 to count - 1, then `last`.
std::function<QByteArray()> source(const Connection& client, int count, std::function<QString(int)> make,
                                   QString last)
{
    return [&client, count, make = std::move(make), last = std::move(last), at = 0]() mutable {
        QString chunk;
        for (const int end = std::min(count, at + ChunkStanzas); at < end; ++at)
            chunk += make(at);
        if (chunk.isEmpty())
            chunk = std::exchange(last, QString());
        return client.rendered(chunk);
    };
}

} // namespace

std::function<QByteArray()> presences(World& world, const Connection& client, const QString& last)
{
    static const std::array<const char*, 5> shows = {"", "away", "dnd", "xa", "chat"};
    const QStringList from = contactsOf(world, client);
    const auto make = [from, to = client.fullJid()](int i) {
        Element presence("presence");
        presence.set("from", from.at(i)).set("to", to);
        if (const QString show = QLatin1String(shows[std::size_t(i) % shows.size()]); !show.isEmpty())
            presence.add("show", show);
        return presence.add("status", QStringLiteral("Status %1").arg(i)).xml();
    };
    return source(client, int(from.size()), make, last);
}

std::function<QByteArray()> messages(World& world, const Connection& client, int count, int size, int senders,
                                     const QString& last)
{
    const QStringList from = contactsOf(world, client).mid(0, senders);
    const auto make = [from, to = client.fullJid(), size](int i) {
        const QString body = QStringLiteral("%1 ").arg(i).leftJustified(size, u'x', true);
        Element message("message");
        message.set("from", from.at(i % from.size())).set("to", to).set("type", QStringLiteral("chat"));
        return message.add("body", body).xml();
    };
    return source(client, from.isEmpty() ? 0 : count, make, last);
}

std::function<QByteArray()> roomTalk(const Connection& client, const QString& room, int count, int occupants,
                                     const QString& last)
{
    const auto make = [room, to = client.fullJid(), occupants](int i) {
        Element message("message");
        message.set("from", room + QStringLiteral("/guest %1").arg(i % occupants));
        message.set("to", to).set("type", QStringLiteral("groupchat"));
        return message.add("body", QStringLiteral("Line %1: %2").arg(i).arg(QString(80, u'x'))).xml();
    };
    return source(client, count, make, last);
}

std::function<QByteArray()> hostile(World& world, const Connection& client, const QString& kind,
                                    const QString& last)
{
    constexpr int many = 100'000;
    const QStringList from = contactsOf(world, client);
    const QString to = client.fullJid();
    const auto saidBy = [to](const QString& peer, const QString& body) {
        Element message("message");
        message.set("from", peer).set("to", to).set("type", QStringLiteral("chat"));
        return message.add("body", body).xml();
    };
    const auto presence = [to](const QString& sender, const QString& type) {
        Element presence("presence");
        presence.set("from", sender).set("to", to);
        return type.isEmpty() ? presence.xml() : presence.set("type", type).xml();
    };
    const auto once = [&](const QString& body) {
        return source(
            client, 1, [text = saidBy(from.value(0), body)](int) { return text; }, last);
    };
    if (kind == u"brackets")
        return once(QStringLiteral("http://a") + QString(2 * many, u')'));
    if (kind == u"emoji")
        return once(QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D").repeated(many / 10));
    if (kind == u"lines")
        return once(QStringLiteral("x\n").repeated(20 * many));
    if (kind == u"links") {
        QString links;
        for (int i = 0; links.size() < many; ++i)
            links += QStringLiteral("www.%1 ").arg(i);
        return once(links);
    }
    if (kind == u"queries") {
        Element request("iq");
        request.set("from", from.value(0)).set("to", to).set("type", QStringLiteral("set"));
        request.set("id", QString(5 * many, u'x'));
        request.raw(QStringLiteral("<a xmlns='jabber:iq:conference'/>").repeated(many));
        return source(
            client, 1, [text = request.xml()](int) { return text; }, last);
    }
    if (kind == u"combining") {
        const auto marks = [](int count) { return QString(count, QChar(0x316)); };
        const QString bare = from.value(0).section(u'/', 0, 0);
        return source(
            client, 1,
            [text = saidBy(bare + u'/' + marks(many), marks(10)) +
                    saidBy(bare + u'/' + marks(500), marks(many))](int) { return text; },
            last);
    }
    if (kind == u"strangers")
        return source(
            client, 1000,
            [saidBy](int i) {
                return saidBy(QStringLiteral("stranger%1@far.example/Home").arg(i), QStringLiteral("Hello"));
            },
            last);
    if (kind == u"requests")
        return source(
            client, 1000,
            [presence](int i) {
                return presence(QStringLiteral("stranger%1@far.example").arg(i < 100 ? 0 : i),
                                QStringLiteral("subscribe"));
            },
            last);
    return source(
        client, many,
        [presence, bare = from.value(0).section(u'/', 0, 0)](int i) {
            return presence(bare + u'/' + QString::number(i), {});
        },
        last);
}

} // namespace sandbox::flood
