#include "inside/Drive.h"

#include "contacts/Client.h"
#include "contacts/RosterStanzas.h"
#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "contacts/forms/RosterView.h"
#include "groupchat/RoomStanzas.h"
#include "groupchat/forms/GroupchatWindowForm.h"
#include "session/forms/SignInForm.h"
#include "settings/Paths.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <stdexcept>

namespace
{

constexpr int messages = 5000;
constexpr int senders = 10;
constexpr int renames = 1000;
constexpr int rounds = 100;

double processCpuMs()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

QString contact(int number)
{
    return QStringLiteral("contact%1@localhost").arg(number);
}

void print(const char* name, const char* what, double value)
{
    std::printf("%s_%s %.3f\n", name, what, value);
    std::fflush(stdout);
}

} // namespace

Drive::Drive(int contacts, const QStringList& steps) : contacts_(contacts), steps_(steps) {}

void Drive::run()
{
    if (!program_.start())
        throw std::runtime_error("the client does not start");
    auto& session = program_.session();
    spy_ = std::make_unique<Spy>(session.dispatch);
    program_.client().Core->PluginManager->PlugIn(spy_.get(), &session);
    rest();
    signIn();
    rest();
    if (contacts_ < renames)
        return;
    static constexpr std::pair<const char*, void (Drive::*)()> own[] = {
        {"presences", &Drive::floodOfPresences},
        {"messages", &Drive::floodOfMessages},
        {"latency", &Drive::latency},
        {"pushes", &Drive::pushes},
        {"log", &Drive::longLog},
        {"join", &Drive::crowd},
        {"search", &Drive::search},
    };
    for (const auto& [name, step] : own) {
        if (isWanted(name))
            (this->*step)();
    }
    for (const char* kind : {"brackets", "emoji", "lines", "combining", "links", "queries", "requests",
                             "resources", "strangers"}) {
        if (isWanted(kind))
            hostile(kind);
    }
}

bool Drive::isWanted(const char* name) const
{
    return steps_.isEmpty() || steps_.contains(QLatin1String(name));
}

void Drive::signIn()
{
    step(
        "signin", [this] { program_.session().windows.session.signIn().Connect_Click(); },
        [this] { return isTreeFull(); });
}

void Drive::floodOfPresences()
{
    step(
        "presences", [this] { order(QStringLiteral("presences")); }, [this] { return spy_->done; });
}

void Drive::floodOfMessages()
{
    for (int i = 1; i <= senders; ++i) {
        program_.session().windows.messages.openConversation(contact(i), true);
        rest();
    }
    const QString text = QStringLiteral("messages %1 100 %2").arg(messages).arg(senders);
    step(
        "messages", [this, &text] { order(text); }, [this] { return spy_->done; });
}

// What a list that is sorted into folders by another program looks like from here.
void Drive::pushes()
{
    const auto begin = [this] {
        for (int i = 1; i <= renames; ++i)
            stanzas::send(program_.client(),
                          stanzas::renameContact(contact(i), QStringLiteral("Friend %1").arg(i),
                                                 QStringLiteral("Group 1")));
    };
    step("pushes", begin, [this] { return spy_->iqs >= renames; });
}

// What a stranger can send.
void Drive::hostile(const char* kind)
{
    step(
        kind, [&] { order(QStringLiteral("hostile ") + QLatin1String(kind)); },
        [this] { return spy_->done; });
}

// A log of 100 MiB is opened.
void Drive::longLog()
{
    const QString peer = contact(1);
    QFile log(paths::logFolder() + u'/' + peer + QStringLiteral(".log"));
    if (!log.open(QIODevice::WriteOnly))
        throw std::runtime_error("the log can't be written");
    const QByteArray line = peer.toUtf8() + " (07:08): " + QByteArray(970, 'x') + "\r\n";
    for (int i = 0; i < 100 * 1024; ++i)
        log.write(line);
    log.close();
    auto& windows = program_.session().windows;
    bool opened = false;
    step(
        "log",
        [&] {
            QTimer::singleShot(0, &windows.messages.hub, [&] {
                windows.messages.hub.ShowMessageLog(peer);
                QTimer::singleShot(0, &windows.messages.hub, [&opened] { opened = true; });
            });
        },
        [&opened] { return opened; });
}

// A room of 2,000 is joined, and 5,000 lines are said in it.
void Drive::crowd()
{
    constexpr int occupants = 2001;
    const QString room = QStringLiteral("crowd@conference.") + program_.client().Gateway().Server();
    const auto& registry = program_.session().windows.registry;
    step(
        "join", [&] { stanzas::send(program_.client(), roomstanzas::askRoom(room)); },
        [&] {
            const auto* window = registry.tagged<GroupchatWindowForm>(room);
            return window && window->occupants.Count() >= occupants && spy_->presences >= occupants;
        });
    step(
        "talk", [this] { order(QStringLiteral("talk")); }, [this] { return spy_->done; });
}

// 5,000 people are found in the directory.
void Drive::search()
{
    auto& windows = program_.session().windows;
    windows.services.search.ask(QStringLiteral("users.") + program_.client().Gateway().Server());
    const auto* form = windows.registry.find(QStringLiteral("SearchForm"));
    QLineEdit* first = nullptr;
    await([&] { return (first = form->findChild<QLineEdit*>(QStringLiteral("Text1_1"))); });
    first->setText(QStringLiteral("Seeker"));
    rest();
    const auto* found = form->findChild<QTableView*>(QStringLiteral("SResultGrid"))->model();
    step(
        "search", [form] { form->findChild<QPushButton*>(QStringLiteral("CmdSearch"))->click(); },
        [found] { return found->rowCount() == 5000; });
}

// From the order's sending to the answer's text in its open window: the way there, the server and the way
// back. At rest, and at any moment between two beats of the pump.
void Drive::latency()
{
    QList<double> all;
    for (int round = 0; round < rounds; ++round) {
        const QDeadlineTimer pause(60 + round * 7 % 50);
        await([&pause] { return pause.hasExpired(); });
        spy_->messages = 0;
        QElapsedTimer clock;
        clock.start();
        order(QStringLiteral("messages 1 100 1"));
        await([this] { return spy_->messages > 0; });
        all += double(clock.nsecsElapsed()) / 1e6;
    }
    std::sort(all.begin(), all.end());
    print("latency", "median", all.at(rounds / 2));
    print("latency", "slowest", all.last());
}

void Drive::step(const char* name, const std::function<void()>& begin, const std::function<bool()>& done)
{
    spy_->done = false;
    spy_->presences = spy_->messages = spy_->iqs = 0;
    QElapsedTimer clock;
    clock.start();
    const double cpu = processCpuMs();
    begin();
    heart_.reset(); // what the driver did itself says nothing about the client
    await(done);
    print(name, "wall", double(clock.nsecsElapsed()) / 1e6);
    print(name, "cpu", processCpuMs() - cpu);
    rest();
    print(name, "rest", processCpuMs() - cpu);
    print(name, "away", heart_.longestMs());
    print(name, "away_cpu", heart_.longestCpuMs());
    std::fprintf(stderr, "%s: %d presences, %d messages, %d iqs\n", name, spy_->presences, spy_->messages,
                 spy_->iqs);
}

void Drive::await(const std::function<bool()>& done)
{
    const QDeadlineTimer patience(120'000);
    while (!done()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (patience.hasExpired())
            throw std::runtime_error("a step never ends");
    }
}

// Whatever was put off is done with.
void Drive::rest()
{
    double before = 0;
    do {
        before = processCpuMs();
        const QDeadlineTimer pause(300);
        await([&pause] { return pause.hasExpired(); });
    } while (processCpuMs() - before > 10);
}

void Drive::order(const QString& text)
{
    auto& packet = program_.client().Application->OutPacket();
    packet.Clear();
    auto fields = packet.MessageFields();
    fields.setTo(QStringLiteral("control@localhost"));
    fields.setType(QStringLiteral("chat"));
    fields.setBody(text);
    packet.Send();
}

bool Drive::isTreeFull()
{
    auto* roster = program_.session().windows.contacts.roster();
    if (!roster)
        return false;
    const auto& model = static_cast<const ContactTree&>(*roster->view().model());
    return model.isSettled() && model.Count() >= contacts_ + 3 &&
           program_.client().MyRoster.Count() >= contacts_;
}
