#include "sandbox/demo/Bench.h"

#include "sandbox/Flood.h"

#include <QStringList>

#include <algorithm>

namespace sandbox::bench
{
namespace
{

constexpr int MostMessages = 10'000'000;
constexpr int LargestBody = 16 * 1024 * 1024;
constexpr int CrowdSize = 2000;
constexpr int TalkLines = 5000;
constexpr int Seekers = 5000; // whom only the directory knows

const QString Crowd = QStringLiteral("crowd");

QString crowdJid(const World& world)
{
    return Crowd + u'@' + world.roomServices().first().jid;
}

QString saying(const QString& from, const Connection& to, const QString& body)
{
    Element message("message");
    message.set("from", from).set("to", to.fullJid()).set("type", QStringLiteral("chat"));
    return message.add("body", body).xml();
}

// The order's number at `place`, at least 1.
int number(const QStringList& order, int place, int most)
{
    return std::clamp(order.value(place).toInt(), 1, most);
}

void obey(World& world, const QString& control, Connection& client, const Stanza& message)
{
    const QStringList order = message.text("body").split(u' ', Qt::SkipEmptyParts);
    const QString done = saying(control, client, QStringLiteral("done"));
    if (order.value(0) == u"presences")
        return client.pour(flood::presences(world, client, done));
    if (order.value(0) == u"messages" && order.size() == 4)
        return client.pour(flood::messages(world, client, number(order, 1, MostMessages),
                                           number(order, 2, LargestBody), number(order, 3, MostMessages),
                                           done));
    if (order.value(0) == u"talk")
        return client.pour(flood::roomTalk(client, crowdJid(world), TalkLines, CrowdSize, done));
    if (order.value(0) == u"hostile")
        return client.pour(flood::hostile(world, client, order.value(1), done));
    const QString usage =
        QStringLiteral("Say \"presences\", \"messages COUNT SIZE SENDERS\", \"talk\" or \"hostile KIND\".");
    client.sendText(saying(control, client, usage));
}

} // namespace

void populate(World& world, int contacts, int groups)
{
    const QString user = QStringLiteral("bench");
    world.addAccount(user, user);
    world.addRoster(user, contacts, groups);
    Room& crowd = world.addRoom(Crowd, QStringLiteral("Crowd"));
    for (int guest = 0; guest < CrowdSize; ++guest)
        crowd.seat(QStringLiteral("Guest %1").arg(guest));
    for (int number = 1; number <= Seekers; ++number) {
        const QString node = QStringLiteral("seeker%1").arg(number);
        world.addPersona(node, QStringLiteral("Seeker Number %1").arg(number)).email =
            node + QStringLiteral("@post.example");
    }
    Persona& control = world.addPersona(QStringLiteral("control"), QStringLiteral("Control"));
    control.hears = [&world, &control](Connection& client, const Stanza& message) {
        if (!message.text("body").isEmpty())
            obey(world, control.fullJid(), client, message);
    };
}

} // namespace sandbox::bench
