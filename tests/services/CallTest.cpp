#include "messaging/forms/MessageForm.h"
#include "support/FakeClient.h"
#include "support/Table.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

#include <functional>

const QString friendJid = "juliet@montague.example/balcony";
const QString stranger = "paris@verona.example/street";
const QString safeLink = "callto:192.0.2.9+type=ip";

using Act = std::function<void(FakeClient&)>;

// Calls that are offered, in the whole client.
class CallTest : public QObject
{
    Q_OBJECT

    struct Signed : FakeClient {
        Signed()
        {
            signIn();
            takeSent();
        }
        void offer(const QString& from, const QString& link)
        {
            inject(QString("<iq type='set' from='%1' to='romeo@montague.example/x' id='7'>"
                           "<query xmlns='jabber:iq:oob'><url>%2</url></query></iq>")
                       .arg(from, link));
        }
        // The titles of the boxes since the last call, in short.
        QString boxes()
        {
            QStringList titles;
            for (const auto& box : std::exchange(world.boxes.shown, {}))
                titles += box.title.section(' ', -1) + (box.icon == MessageBoxes::Icon::Critical ? "!" : "");
            return titles.join(',');
        }
    };

private slots:
    void invites_data()
    {
        columns<QString, QString, QString, QString>("resource", "to", "own", "boxes");
        row("to the resource that is chosen", "balcony", "juliet@montague.example/balcony", "192.0.2.7", "");
        row("to the bare address", "", "juliet@montague.example", "192.0.2.7", "");
        row("without an own address", "", "juliet@montague.example", "", "Call!");
    }
    void invites()
    {
        const auto [resource, to, own, boxes] = fetched<QString, QString, QString, QString>();
        Signed f;
        f.world.network.own = {own, own.isEmpty() ? "There is none." : ""};
        f.ui->windows.messages.openConversation("juliet@montague.example", false);
        f.client.Core->tick();
        auto* window = dynamic_cast<MessageForm*>(f.client.Core->PluginManager->sessions()
                                                      .session("juliet@montague.example")
                                                      ->Properties()
                                                      .Item("ChatWnd"));
        QVERIFY(window);
        for (const auto& name : {resource, QString("loggia")}) {
            if (!resource.isEmpty())
                f.inject("<presence from='juliet@montague.example/" + name + "'/>");
        }
        if (!resource.isEmpty())
            ui::find<QComboBox>(window, "ComboResource")->setCurrentText(resource);
        f.takeSent();
        ui::find<QAction>(window, "mnustrsendfile")->trigger();
        const auto sent = f.takeSent().replaceInStrings(QRegularExpression(R"( id="brelo\d+")"), "");
        QCOMPARE(sent, QStringList(QString(R"(<iq type="set"  to="%1" ><query xmlns="jabber:iq:oob">)"
                                           "<url>callto:%2+type=ip</url></query></iq>")
                                       .arg(to, own)));
        QCOMPARE(f.boxes(), boxes);
    }

    void offersAreAskedAbout_data()
    {
        columns<Act, QString, QString, QString>("offer", "boxes", "opened", "denied");
        using Answer = MessageBoxes::Answer;
        const auto answered = [](Answer answer, const QString& from, const QString& link) {
            return Act([=](FakeClient& f) {
                f.world.boxes.answers += answer;
                static_cast<Signed&>(f).offer(from, link);
            });
        };
        row("yes", answered(Answer::Yes, friendJid, safeLink), "Call", safeLink, "");
        row("no", answered(Answer::No, friendJid, safeLink), "Call", "", friendJid);
        row("closed", answered(Answer::Cancel, friendJid, safeLink), "Call", "", friendJid);
        for (const QString link : {"file:///bin/sh", "", "javascript:1", "-opt"})
            row(("unsafe " + link.toLatin1()).constData(), answered(Answer::Yes, friendJid, link),
                "Call,Error", "", friendJid);
        row("a stranger", answered(Answer::Yes, stranger, safeLink), "Call", safeLink, "");
        row("a stranger who may not write", Act([=](FakeClient& f) {
                f.client.settings.AcceptMessageFromAll = false;
                static_cast<Signed&>(f).offer(stranger, safeLink);
            }),
            "", "", "");
        row("signed out under the box", Act([=](FakeClient& f) {
                f.world.boxes.meanwhile = [&f] { f.ui->end.returnToSignIn(); };
                f.world.boxes.answers += Answer::Yes;
                static_cast<Signed&>(f).offer(friendJid, safeLink);
            }),
            "Call", "", "");
        const auto again = [=](const QString& second, int seconds) {
            return Act([=](FakeClient& f) {
                f.world.boxes.answers += {Answer::No, Answer::Yes};
                static_cast<Signed&>(f).offer(stranger, safeLink);
                f.world.clock.time = f.world.clock.time.addSecs(seconds);
                static_cast<Signed&>(f).offer(second, safeLink);
            });
        };
        row("another stranger at once", again("gregory@verona.example", 59), "Call", "", stranger);
        row("later", again(stranger, 60), "Call,Call", safeLink, stranger);
        row("a friend meanwhile", again(friendJid, 0), "Call,Call", safeLink, stranger);
    }
    void offersAreAskedAbout()
    {
        const auto [offer, boxes, opened, denied] = fetched<Act, QString, QString, QString>();
        Signed f;
        offer(f);
        const auto shown = f.world.boxes.shown;
        QCOMPARE(f.boxes(), boxes);
        if (!shown.isEmpty()) {
            const QString from = shown[0].text.section(' ', 0, 0);
            QVERIFY(shown[0].text.startsWith(from +
                                             " is trying to connect to you using NetMeeting, do you want "
                                             "to accept the Call?"));
            QCOMPARE(shown[0].buttons, MessageBoxes::Buttons::YesNo);
        }
        QCOMPARE(f.world.links.opened.join(','), opened);
        QStringList messages = f.takeSent();
        messages.removeIf([](const QString& text) { return !text.startsWith("<message"); });
        QCOMPARE(messages.join('\n').contains(denied.isEmpty() ? "denied" : "to=\"" + denied + '"'),
                 !denied.isEmpty());
        QCOMPARE(messages.join(' ').count("<body>Automatic Message: NetMeeting Call denied</body>"),
                 denied.isEmpty() ? 0 : 1);
    }

    // Where the link leads stands in the box whatever the caller writes.
    void linksAreShownAsTheyAre_data()
    {
        columns<QString, QString, QString>("from", "link", "shown");
        row("letters that look like others", friendJid, QString::fromUtf8("http://g\u043e\u043egle.example/"),
            "http://xn--ggle-55da.example/");
        row("turned around", friendJid, QString::fromUtf8("callto:a\u202emoc"), "callto:a%E2%80%AEmoc");
        row("below a caller of any length", QString(1000, 'j') + '@' + QString(1000, 'x'), safeLink,
            safeLink);
        row("refused", friendJid, "callto:a\n\n\n\tb c", "callto:a b c");
        row("endless", friendJid, QString(1 << 20, 'w'), QString(500, 'w') + "...");
    }
    void linksAreShownAsTheyAre()
    {
        const auto [from, link, shown] = fetched<QString, QString, QString>();
        Signed f;
        f.world.boxes.answers = {MessageBoxes::Answer::Yes};
        f.offer(from, link);
        for (const auto& box : std::as_const(f.world.boxes.shown)) {
            const auto parts = box.text.split("\n\n");
            QCOMPARE(QString(parts.last()).remove('\n'), shown);
            for (const auto& line : box.text.split('\n'))
                QVERIFY(line.size() < 300);
        }
        QCOMPARE(f.boxes(), f.world.links.opened.isEmpty() ? "Call,Error" : "Call");
        QCOMPARE(f.world.links.opened.isEmpty(), shown.contains(' ') || shown.endsWith('.'));
    }

    // What nobody asked for tells nothing.
    void refusedInvitations()
    {
        Signed f;
        const QString error = "<iq type='error' id='brelo9' from='%1'><query xmlns='jabber:iq:oob'/></iq>";
        f.inject(error.arg(friendJid));
        QCOMPARE(f.boxes(), QString());
        f.ui->windows.services.calls.invite("Juliet@Montague.example/balcony");
        f.inject(error.arg(stranger));
        QCOMPARE(f.boxes(), QString());
        f.inject(error.arg(friendJid));
        QCOMPARE(f.world.boxes.shown.value(0).text, QString("Impossible to contact your friend !"));
        f.inject(error.arg(friendJid));
        QCOMPARE(f.boxes(), QString("Error"));
    }
};

BRELO_TEST(CallTest)
#include "CallTest.moc"
