#include "sandbox/demo/Life.h"

#include "sandbox/Address.h"
#include "sandbox/demo/Cast.h"
#include "sandbox/handlers/Calls.h"
#include "sandbox/handlers/MessageHandler.h"
#include "sandbox/handlers/Subscribing.h"

#include <QTimer>

#include <array>

namespace sandbox::demo
{
namespace
{

struct Mood {
    const char* show; // null for offline
    const char* status;
};

constexpr std::array<Mood, 8> Moods = {{{"", "Here I am"},
                                        {"", "Back at the desk"},
                                        {"chat", "Bored, talk to me"},
                                        {"away", "Having lunch"},
                                        {"away", "Back in five minutes"},
                                        {"dnd", "On the phone"},
                                        {"xa", "Gone for the day"},
                                        {nullptr, ""}}};

constexpr std::array<const char*, 8> Lines = {
    "Did anybody water the tomatoes?", "I did, this morning.",      "Then why do they look at me like that?",
    "They want a bigger pot.",         "So do I, frankly.",         "/me laughs",
    "The new herbs are in bed three.", "Basil & thyme, I saw them."};

constexpr std::array<const char*, 3> News = {"The server is well and sends its regards.",
                                             "A new room has opened: the Workshop.",
                                             "Tonight between 3 and 4 nothing at all will happen."};

constexpr int PresenceEvery = 8000;
constexpr int LineEvery = 11000;
constexpr int NewsEvery = 120000;
constexpr int AsksAfter = 9000;
constexpr int TypesFor = 1500;

const QString CallMe = QStringLiteral("call me"); // said to the one who always answers

} // namespace

Life::Life(SandboxServer& server, quint32 seed) : server_(server), random_(seed)
{
    every(PresenceEvery, &Life::changeSomebody);
    every(LineEvery, &Life::talk);
    every(NewsEvery, &Life::tellNews);
    connect(&server_, &SandboxServer::signedIn, this, &Life::askSoon);
    server_.world().persona(Echo)->hears = [this](Connection& from, const Stanza& message) {
        if (const QString body = message.text("body"); !body.isEmpty())
            echo(from.bareJid(), body);
    };
}

void Life::every(int milliseconds, void (Life::*happens)())
{
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, happens);
    timer->start(milliseconds);
}

// Anybody but the one who always answers.
void Life::changeSomebody()
{
    const auto& items = server_.world().account(User)->roster.items();
    const QString jid = items.at(random_.bounded(items.size())).jid;
    const Mood mood = Moods[std::size_t(random_.bounded(int(Moods.size())))];
    const auto* persona = server_.world().persona(jid);
    if (!persona || address::node(jid) == Echo)
        return;
    if (mood.show)
        server_.world().setOnline(jid, QLatin1String(mood.show), QLatin1String(mood.status));
    else
        server_.world().setOffline(jid);
}

void Life::talk()
{
    Room* garden = server_.world().room(Garden + u'@' + server_.world().roomServices().first().jid);
    const QString& talker = line_ % 2 == 0 ? FirstTalker : SecondTalker;
    garden->sayAs(talker, QLatin1String(Lines[std::size_t(line_++) % Lines.size()]));
}

void Life::tellNews()
{
    const QString body = QLatin1String(News[std::size_t(news_++) % News.size()]);
    messages::headline(server_.world(), Host, QStringLiteral("Server news"), body);
}

void Life::askSoon(const QString& user)
{
    QTimer::singleShot(AsksAfter, this, [this, user] {
        const auto* account = server_.world().account(user);
        const QString asker = address::local(Asker);
        if (account && !account->roster.find(asker))
            subscribing::deliver(server_.world(), asker, address::local(user), QStringLiteral("subscribe"));
    });
}

void Life::echo(const QString& bareJid, const QString& body)
{
    sendFromEcho(bareJid, Element("x", "jabber:x:event").add("composing"));
    QTimer::singleShot(TypesFor, this, [=, this] {
        sendFromEcho(bareJid, Element("body").text(body));
        if (auto* session = body == CallMe ? server_.world().sessions.best(bareJid) : nullptr)
            telephone::invite(*server_.world().persona(Echo), *session);
    });
}

void Life::sendFromEcho(const QString& bareJid, const Element& content)
{
    if (auto* session = server_.world().sessions.best(bareJid)) {
        Element message("message");
        message.set("from", server_.world().persona(Echo)->fullJid()).set("to", session->fullJid());
        session->send(message.set("type", QStringLiteral("chat")).add(content));
    }
}

} // namespace sandbox::demo
