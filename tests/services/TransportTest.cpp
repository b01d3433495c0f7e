#include "desktop/forms/WaitAnimation.h"
#include "preferences/forms/PreferencesForm.h"
#include "services/forms/TransportUsrCtrl.h"
#include "support/FakeClient.h"
#include "support/Table.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

const QString msn = "msn.montague.example";
const QString asks = QString(R"(<iq type="get" id="transportquery" to="%1">)"
                             R"(<query xmlns="jabber:iq:register"></query></iq>)")
                         .arg(msn);
const QString usual = "<key>k&amp;1</key><instructions>Who are you?</instructions><username/><password/>";
const QString registered = "<registered/><username>romeo</username><password/>";
const QString unavailable = "The Gateway could not be contacted, it could be not available.";

// A client that is signed in where there are gateways, with the page of one of them.
struct GatewayPage : FakeClient {
    TransportUsrCtrl* panel = nullptr;

    GatewayPage()
    {
        signIn();
        agents({msn, "icq.montague.example"});
        open();
    }
    void agents(const QStringList& jids)
    {
        QString inner;
        for (const auto& jid : jids)
            inner += "<agent jid='" + jid + "'><name>The &lt;b>net</name><transport/></agent>";
        inject("<iq type='result'><query xmlns='jabber:iq:agents'>" + inner + "</query></iq>");
        takeSent();
    }
    void open()
    {
        ui->windows.preferences.show(msn);
        panel = preferences()->gatewayPanel(msn);
    }
    PreferencesForm* preferences() const { return qobject_cast<PreferencesForm*>(form("PreferencesForm")); }
    void answer(const QString& inner, const QString& id = "transportquery", const QString& from = msn)
    {
        inject("<iq type='result' id='" + id + "' from='" + from + "'>" +
               (inner.isNull() ? inner : "<query xmlns='jabber:iq:register'>" + inner + "</query>") +
               "</iq>");
    }
    void refuse(const QString& id)
    {
        inject("<iq type='error' id='" + id + "' from='" + msn +
               "'><query xmlns='jabber:iq:register'/><error code='406'>No &lt;b&gt;</error></iq>");
    }
    void type(const char* field, const QString& text) { ui::type(panel, field, text); }
    QString text(const char* label) const { return ui::find<QLabel>(panel, label)->text(); }
    QString status() const { return text("TrDescription"); }
    CAgentsItem& agent() { return *client.MyAgents.record(msn); }
    bool isRunning() const { return ui::find<WaitAnimation>(panel, "Image1")->isRunning(); }

    // The rows of the form, hidden ones with a star, and the buttons that can be pressed.
    QString look() const
    {
        QStringList rows;
        for (int index = 1; auto* label = label_(index); ++index) {
            if (!label->isVisible())
                continue;
            const auto* edit = qobject_cast<QLineEdit*>(label->buddy());
            if (edit && edit->objectName() != QString("txtField%1").arg(index))
                rows += "ANOTHER'S";
            const bool hides = edit && edit->echoMode() != QLineEdit::Normal;
            rows += label->text() + (hides ? "*" : "") + (edit ? "=" + edit->text() : "");
        }
        QString on;
        for (const char* button : {"cmdRegister", "cmdremove", "cmdUndo"}) {
            if (ui::find<QPushButton>(panel, button)->isEnabled())
                on += QString(button).mid(3, 1);
        }
        return rows.join(',') + "|" + on;
    }

private:
    QLabel* label_(int index) const { return panel->findChild<QLabel*>(QString("LbltxtField%1").arg(index)); }
};

using Act = std::function<void(GatewayPage&)>;

// The page of a gateway, in the whole client.
class TransportTest : public QObject
{
    Q_OBJECT

private slots:
    void formsAreShown_data()
    {
        columns<QString, QString, QString, QString>("inner", "look", "status", "word");
        const QString line = "Gateway is already registered !";
        row("usual", usual, "username=,password*=|R", "Who are you?", "");
        row("special names in any case", "<KEY>k</KEY><Instructions>I</Instructions><Registered/><nick/>",
            line + ",nick=|r", "I", "");
        row("what is special stands where it comes", "<nick/><registered/><a/>", "nick=," + line + ",a=|r",
            "", "");
        row("registered without a field", "<registered/>", line + "|r", "", "");
        row("markup", "<nick>a &lt;b> &amp; c</nick><instructions>&lt;b>x</instructions>", "nick=a <b> & c|R",
            "<b>x", "");
        row("names of all sorts", "<e-mail>x</e-mail><oldPassWord2/><nick/><nick>2</nick>",
            "e-mail=x,oldPassWord2*=,nick=,nick=2|R", "", "");
        row("no field", "", "|R", "", "");
        const QString data = "<x xmlns='jabber:x:data'><field/></x>";
        row("a form of another kind as well", data + usual, "username=,password*=|R", "Who are you?", "");
        row("a form of another kind alone", data + "<instructions>I</instructions>", "|", "I",
            "The gateway's form is of a kind that can't be shown here.");
        row("a name that can't go back", "<p:a xmlns:p='p' xmlns='jabber:iq:register'>1</p:a>", "p:a=1|R", "",
            "A field's name can't be sent back, so that the field is left out.");
        row("two queries", "<a/></query><query xmlns='jabber:iq:register'><b/>", "a=,b=|R", "", "");
    }
    void formsAreShown()
    {
        const auto [inner, look, status, word] = fetched<QString, QString, QString, QString>();
        GatewayPage page;
        QCOMPARE(page.takeSent(), QStringList(asks));
        QCOMPARE(page.look() + page.status() + page.text("LblTransportName"), "|UFetching info ..." + msn);
        QVERIFY(page.isRunning());
        page.agent().registered = true; // as its presence let suppose
        page.answer(inner);
        QCOMPARE(page.look(), look);
        QCOMPARE(page.status(), status);
        QCOMPARE(page.text("lblState"), word);
        QVERIFY(!page.isRunning());
        QCOMPARE(page.agent().registered, look.endsWith('r'));
        QCOMPARE(page.takeSent(), QStringList());
    }

    void hugeAnswersStayBounded()
    {
        GatewayPage page;
        QString fields;
        for (int index = 0; index < 10'000; ++index)
            fields += "<f" + QString::number(index) + "/>";
        const QString word(1 << 20, 'w');
        page.answer("<instructions>" + word + "</instructions><a" + word + "/>" + fields);
        QVERIFY(page.status().size() < 20'000);
        QCOMPARE(page.look().count("=") + page.text("lblState").count("10001"), 201);
        auto* area = ui::find<QScrollArea>(page.panel, "scrDescription");
        QTRY_VERIFY(area->focusPolicy() == Qt::StrongFocus); // the keys scroll it
        QVERIFY(area->height() < 300 && page.preferences()->width() < 1200);
    }

    void whatIsSent()
    {
        GatewayPage page;
        const QString longValue(40'000, 'v');
        page.answer("<key>k&amp;1</key><username>r</username><password/><n>" + longValue + "</n><e/>" +
                    "<p:x xmlns:p='p'>1</p:x>");
        page.takeSent();
        page.type("txtField1", "a<b>&\"");
        page.type("txtField2", " s ");
        ui::click(page.panel, "cmdRegister");
        QCOMPARE(page.takeSent().join(""),
                 QString(R"(<iq type="set" id="register-transport" to="%1"><query )"
                         R"(xmlns="jabber:iq:register"><username>a&lt;b&gt;&amp;&quot;</username>)"
                         "<password> s </password><n>%2</n><e></e><key>k&amp;1</key></query></iq>")
                     .arg(msn, longValue));
        QCOMPARE(page.look() + page.status(), QString("|UWaiting for a reply..."));
        QVERIFY(page.isRunning());
        page.answer("<key>K</key>" + registered, "register-transport");
        ui::click(page.panel, "cmdremove");
        QCOMPARE(page.takeSent().join(""),
                 QString(R"(<iq id="VRX_UNREGISTER" to="%1" type="set"><query xmlns="jabber:iq:register">)"
                         "<remove/><key>K</key></query></iq>")
                     .arg(msn));
        QCOMPARE(page.look() + page.status(), QString("|UWaiting for a reply ..."));
        QVERIFY(page.isRunning());
    }

    // `begin` is what the page waits for. After `end` there is a look, a status, and what was sent.
    void waitsEnd_data()
    {
        columns<QString, QString, Act, QString, QString, QString>("form", "begin", "end", "look", "status",
                                                                  "sent");
        const QString typed = "username=me,password*=|R";
        const QString none = "|U";
        const QString fetching = "Fetching info ...";
        const QString done = "Gateway is already registered !,username=romeo,password*=|r";
        const Act formless = [](GatewayPage& p) { p.answer(QString(), "register-transport"); };
        row("registered, and said so", usual, "cmdRegister",
            Act([](GatewayPage& p) { p.answer(registered, "register-transport"); }), done, "", "");
        row("registered without a word", usual, "cmdRegister", formless, none, fetching, asks);
        row("registered, and the form again", usual, "cmdRegister",
            Act([](GatewayPage& p) { p.answer("<username/>", "register-transport"); }), none, fetching, asks);
        const QString error = unavailable + "\nNo <b>";
        row("refused", usual, "cmdRegister", Act([](GatewayPage& p) { p.refuse("register-transport"); }),
            typed, error, "");
        row("given up", usual, "cmdRegister", Act([](GatewayPage& p) { ui::click(p.panel, "cmdUndo"); }),
            typed, "The wait was given up. Choose the page again to ask the gateway once more.", "");
        row("connection lost", usual, "cmdRegister",
            Act([](GatewayPage& p) { p.ui->windows.preferences.sessionEnded(); }), typed,
            "The connection was lost before the gateway answered.", "");
        row("removed", registered, "cmdremove",
            Act([](GatewayPage& p) { p.answer(QString(), "VRX_UNREGISTER"); }), none, fetching, asks);
        row("removed, and the request again", registered, "cmdremove",
            Act([](GatewayPage& p) { p.answer("", "VRX_UNREGISTER"); }), none, fetching, asks);
        row("removal refused", registered, "cmdremove",
            Act([](GatewayPage& p) { p.refuse("VRX_UNREGISTER"); }), done, error, "");
        row("no form for it", usual, "", Act([](GatewayPage& p) { p.refuse("transportquery"); }), "|", error,
            "");
        row("a result without a form", usual, "", Act([](GatewayPage& p) { p.answer(QString()); }), "|",
            "The gateway has sent no form.", "");
        row("another gateway's answer", usual, "cmdRegister",
            Act([](GatewayPage& p) { p.answer(registered, "register-transport", "icq.montague.example"); }),
            none, "Waiting for a reply...", "");
        row("from a resource, in capitals", usual, "cmdRegister", Act([](GatewayPage& p) {
                p.answer(registered, "register-transport", msn.toUpper() + "/registered");
            }),
            done, "", "");
        row("an answer after all", usual, "cmdRegister", Act([](GatewayPage& p) {
                ui::click(p.panel, "cmdUndo");
                p.answer(registered, "register-transport");
            }),
            done, "", "");
    }
    void waitsEnd()
    {
        const auto [form, begin, end, look, status, sent] =
            fetched<QString, QString, Act, QString, QString, QString>();
        GatewayPage page;
        page.answer(form);
        if (begin == "cmdRegister")
            page.type("txtField1", "me");
        if (!begin.isEmpty()) {
            ui::click(page.panel, qPrintable(begin));
        } else {
            page.preferences()->showPage("Gateways");
            page.open();
        }
        page.takeSent();
        end(page);
        QCOMPARE(page.look(), look);
        QCOMPARE(page.status(), status);
        QCOMPARE(page.takeSent().join(""), sent);
        QCOMPARE(page.isRunning(), look.endsWith('U'));
        QVERIFY(!begin.contains("remove") || sent.isEmpty() || !page.agent().registered);
        QCOMPARE(page.text("lblState"),
                 begin.contains("remove") && !sent.isEmpty() ? "The Gateway has been removed." : "");
    }

    void whatIsTypedStays_data()
    {
        columns<Act, QString>("meanwhile", "look");
        row("the page is left", Act([](GatewayPage& p) {
                p.preferences()->showPage("Sounds");
                p.open();
                p.answer("<password/><nick>n</nick><username>else</username>");
            }),
            "password*=,nick=n,username=me|R");
        row("the list comes again", Act([](GatewayPage& p) { p.agents({msn}); }), "username=me,password*=|R");
        row("another gateway comes", Act([](GatewayPage& p) {
                p.agents({"a.x", "b.x"});
            }),
            "username=me,password*=|R");
        row("the form is refused at first", Act([](GatewayPage& p) {
                p.preferences()->showPage("Sounds");
                p.open();
                p.refuse("transportquery");
                ui::find<QTreeWidget>(p.preferences(), "TreeView1")
                    ->itemClicked(p.preferences()->FindNode(msn), 0);
                p.answer(usual);
            }),
            "username=me,password*=|R");
        row("without a connection", Act([](GatewayPage& p) {
                p.gateway->connected = false;
                ui::click(p.panel, "cmdRegister");
                QCOMPARE(p.text("lblState"), "You are not connected.");
                p.preferences()->showPage("Sounds");
                p.open();
                QCOMPARE(p.text("lblState") + p.status(), "You are not connected.");
            }),
            "username=me,password*=|R");
    }
    void whatIsTypedStays()
    {
        const auto [meanwhile, look] = fetched<Act, QString>();
        GatewayPage page;
        page.answer(usual);
        page.type("txtField1", "me");
        meanwhile(page);
        QCOMPARE(page.look(), look);
        QVERIFY(!page.isRunning());
        QCOMPARE(page.preferences()->currentPage(), msn);
    }

    void theKeysDoWhatTheButtonsDo()
    {
        GatewayPage page;
        QVERIFY(QTest::qWaitForWindowActive(page.preferences()));
        page.answer("<username/><nick/>");
        auto* first = ui::find<QLineEdit>(page.panel, "txtField1");
        ui::find<QTreeWidget>(page.preferences(), "TreeView1")->setFocus();
        QString visited;
        for (int steps = 0; steps < 4; ++steps) {
            QTest::keyClick(page.preferences()->focusWidget(), Qt::Key_Tab);
            visited += page.preferences()->focusWidget()->objectName() + ' ';
        }
        QCOMPARE(visited, "txtField1 txtField2 cmdRegister cmdRestoreRegistry ");
        first->setFocus();
        page.takeSent();
        QTest::keyClick(first, Qt::Key_Return);
        QVERIFY(page.takeSent().join("").contains("register-transport"));
        QCOMPARE(page.preferences()->focusWidget()->objectName(), "cmdUndo");
        QTest::keyClick(page.preferences()->focusWidget(), Qt::Key_Escape);
        QCOMPARE(page.look(), "username=,nick=|R");
        QCOMPARE(page.preferences()->focusWidget(), first);
        QTest::keyClick(first, Qt::Key_Return);
        page.answer(registered, "register-transport");
        page.takeSent();
        QTest::keyClick(page.preferences()->focusWidget(), Qt::Key_Return); // once too often
        QCOMPARE(page.takeSent(), QStringList());
        QTest::keyClick(page.preferences()->focusWidget(), Qt::Key_Escape); // closes the preferences as ever
        QVERIFY(!page.preferences());
    }

    void gatewaysComeAndGo()
    {
        GatewayPage page;
        const auto listed = [&page] {
            QString names;
            const auto* node = page.preferences()->FindNode("Gateways");
            for (int index = 0; index < node->childCount(); ++index)
                names += node->child(index)->text(0) + ' ';
            return names + (node->isExpanded() ? "open" : "");
        };
        QCOMPARE(listed(), msn + " icq.montague.example open");
        const auto* node = page.preferences()->FindNode(msn);
        QCOMPARE(node->toolTip(0), "The &lt;b&gt;net");
        QVERIFY(node->data(0, Qt::UserRole).toString().endsWith("GatewayN"));
        page.client.MyAgents.AddItem("jud.x", "no gateway", false, false);
        page.agents({msn, "Security", msn});
        QCOMPARE(listed(), msn + " icq.montague.example Security open");
        page.ui->windows.preferences.show("Security");
        QCOMPARE(page.preferences()->FindNode("Security")->parent(), nullptr); // the category
        page.open();
        page.takeSent();
        page.client.MyAgents.RemoveAll();
        page.client.MyAgents.AddItem("icq.montague.example", "", false, false)->IsTransport = true;
        page.ui->windows.preferences.reload(); // its neighbour isn't chosen instead
        QCOMPARE(listed() + page.preferences()->currentPage(), "icq.montague.example openGateways");
        page.client.MyAgents.RemoveAll();
        page.ui->windows.preferences.sessionEnded();
        QCOMPARE(listed(), "open");
        QCOMPARE(page.preferences()->currentPage(), "Gateways");
        QVERIFY(page.preferences()->panel("Gateways")->isVisible());
        page.agents({"b.x"});
        QCOMPARE(listed(), "b.x open");
        page.ui->windows.preferences.show("gone.x");
        QCOMPARE(page.preferences()->currentPage(), "Gateways");
        QCOMPARE(page.takeSent(), QStringList()); // nobody else was asked
    }

    // Accepted and subscribed back without a question; the page then shows what became of it.
    void aGatewayThatSubscribesIsAccepted()
    {
        GatewayPage page;
        page.answer(usual);
        page.takeSent();
        const QString subscribe = "<presence from='" + msn + "' type='subscribe'/>";
        for (const QString& last : {asks, QString()}) {
            page.inject(subscribe);
            const auto sent = page.takeSent();
            const auto presence = [](const char* type) {
                return QString(R"(<presence to="%2" type="%1"/>)").arg(type, msn);
            };
            QCOMPARE(sent.mid(0, 2), QStringList({presence("subscribed"), presence("subscribe")}));
            QCOMPARE(sent.mid(2).join(""), last);
            QVERIFY(!page.form("authorizeForm"));
            page.answer(registered);
        }
    }
};

BRELO_TEST(TransportTest)
#include "TransportTest.moc"
