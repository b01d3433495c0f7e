#include "contacts/forms/RosterForm.h"
#include "preferences/forms/PreferencesForm.h"
#include "services/forms/ResultGrid.h"
#include "session/forms/SignInForm.h"
#include "support/FakeClient.h"
#include "support/Table.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

const QString page = "Server management";

// The page of the server's administrators, in the whole client.
class AdminTest : public QObject
{
    Q_OBJECT

    struct Admin : FakeClient {
        QWidget* panel = nullptr;
        Admin()
        {
            signIn();
            namespaces("jabber:iq:admin");
            ui::choose(rosterForm(), "mRosterServerName");
            panel = preferences()->panel(page);
            asked = takeSent().last();
        }
        PreferencesForm* preferences() const
        {
            return qobject_cast<PreferencesForm*>(form("PreferencesForm"));
        }
        void namespaces(const QString& ns)
        {
            inject("<iq type='result' id='VRX_GET_SUPPORTEDNS' from='montague.example'><query "
                   "xmlns='jabber:iq:browse'><ns>" +
                   ns + "</ns></query></iq>");
        }
        void answer(const QString& type, const QString& inner)
        {
            inject("<iq type='" + type +
                   "' id='VRX_GET_ONLINEUSERS' from='montague.example/admin'><query "
                   "xmlns='jabber:iq:browse'>" +
                   inner + "</query><error code='403'>Forbidden &lt;b></error></iq>");
        }
        void type(const char* control, const QString& text)
        {
            if (auto* body = panel->findChild<QPlainTextEdit*>(control))
                body->setPlainText(text);
            else
                ui::type(panel, control, text);
        }
        QString text(const char* label) const { return ui::find<QLabel>(panel, label)->text(); }
        // The boxes since the last call.
        QString boxes()
        {
            QStringList texts;
            for (const auto& box : std::exchange(world.boxes.shown, {}))
                texts += QString::number(int(box.icon)) + ' ' + box.title + ": " + box.text;
            return texts.join('\n');
        }
        QString asked;
    };

private slots:
    void onlyAdministratorsHaveThePage()
    {
        FakeClient other;
        other.signIn();
        other.ui->windows.preferences.show(page);
        auto* form = qobject_cast<PreferencesForm*>(other.form("PreferencesForm"));
        QCOMPARE(form->currentPage(), "Gateways");
        QVERIFY(!form->FindNode(page));
        QVERIFY(!ui::find<QMenu>(other.rosterForm(), "mRosterAdmin")->menuAction()->isVisible());

        Admin f;
        const auto* tree = ui::find<QTreeWidget>(f.preferences(), "TreeView1");
        QCOMPARE(tree->topLevelItem(tree->topLevelItemCount() - 1)->text(0), page);
        QVERIFY(f.panel->isVisible() && f.panel->objectName().endsWith("GatewayN"));
        // Nothing of it needs scrolling where the screen has room.
        const auto* lowest = ui::find<QPushButton>(f.panel, "cmdChangePWD");
        QTRY_COMPARE(lowest->visibleRegion().boundingRect(), lowest->rect());
        // It stays while the preferences are open, and is no setting to restore.
        f.namespaces("jabber:iq:roster");
        f.ui->windows.preferences.reload();
        QVERIFY(f.preferences()->FindNode(page));
        f.namespaces("jabber:iq:admin");
        ui::click(f.preferences(), "cmdRestoreRegistry");
        ui::click(f.form("RestoreRegForm"), "cmdYes");
        QCOMPARE(f.preferences()->currentPage(), page);
        // It is the account's alone.
        QTRY_COMPARE(f.client.settings.UserName, QString("romeo")); // stored after the sign-in
        for (const QString user : {"romeo", "paris"}) {
            f.ui->end.returnToSignIn();
            ui::type(&f.signInForm(), "txtUserName", user);
            ui::click(&f.signInForm(), "Connect");
            QCOMPARE(f.client.settings.UserMode, user == "romeo");
        }
    }

    void usersAreCounted_data()
    {
        columns<QString, QString, QString, QString>("type", "inner", "count", "word");
        row("some", "result", "<user name='a (1)'/><user name='b'/><x><user name='(c'/></x><item name='('/>",
            "2", "");
        row("nobody", "result", "", "0", "");
        row("refused", "error", "<user name='('/>", "?", "The server does not tell how many: Forbidden <b>");
    }
    void usersAreCounted()
    {
        const auto [type, inner, count, word] = fetched<QString, QString, QString, QString>();
        Admin f;
        QCOMPARE(f.asked, R"(<iq type="get" id="VRX_GET_ONLINEUSERS" to="montague.example/admin">)"
                          R"(<query xmlns="jabber:iq:browse"></query></iq>)");
        QCOMPARE(f.text("Label8") + f.text("Label9") + f.text("Label10"), "There are...users Online.");
        f.answer(type, inner);
        QCOMPARE(f.text("Label9"), count);
        QCOMPARE(f.text("lblState"), word);
        f.preferences()->showPage("Sounds");
        f.preferences()->showPage(page);
        QCOMPARE(f.takeSent(), QStringList(f.asked));
        f.gateway->connected = false;
        f.preferences()->showPage("Sounds");
        f.preferences()->showPage(page);
        QCOMPARE(f.takeSent(), QStringList());
        QCOMPARE(f.text("Label9") + f.text("lblState"), "?You are not connected.");
    }

    void usersAreListed()
    {
        Admin f;
        f.answer("result",
                 "<user jid='b@x' name='b (1)'/><user jid='c@x' name='c'/><user jid='a@x' name='a (2)'/>");
        auto* users = ui::find<ResultGrid>(f.panel, "OnlineUsers");
        QVERIFY(!users->isVisible());
        ui::click(f.panel, "cmdUsers");
        QVERIFY(users->isVisible());
        users->sortByColumn(0, Qt::AscendingOrder);
        users->selectAll();
        QCOMPARE(users->selectedText(), "a@x\ta (2)\nb@x\tb (1)");
        users->selectRow(0);
        QTest::keyClick(users, Qt::Key_Return);
        QCOMPARE(ui::find<QLineEdit>(f.panel, "txtUserName")->text(), "a@x");
        QCOMPARE(f.preferences()->focusWidget(), ui::find<QWidget>(f.panel, "txtPWD"));
        emit users->messageRequested("b@x");
        f.client.Core->tick();
        QVERIFY(f.form("MessageForm") && f.form("MessageForm")->isVisible());
        f.answer("error", "");
        QCOMPARE(users->model()->rowCount(), 0);
    }

    // `fields` is typed, a word a field; the caret comes to `caret` where something is refused.
    void commands_data()
    {
        columns<QString, QStringList, QString, QString, QString>("button", "fields", "sent", "box", "caret");
        const auto message = [](const char* to, const QString& inner) {
            return QString(R"(<message to="montague.example/announce/%1">%2</message>)").arg(to, inner);
        };
        const QStringList text{"txtSubjectOnline", "S<", "txtMsgOnline", "a & b\nc"};
        row("send", "cmdSendOnline", text,
            message("online", "<subject>S&lt;</subject><body>a &amp; b\nc</body>"),
            "1 Notify: Message has been sent!", "");
        const QStringList day{"txtSubjectMOTD", "", "txtMsgMOTD", "today"};
        row("the day's message", "cmdSetMOTD", day, message("motd", "<subject></subject><body>today</body>"),
            "1 Notify: MOTD has changed!", "");
        const QString word = "4 Attention!: Please, enter a message.";
        row("nothing to send", "cmdSendOnline", QStringList{"txtMsgOnline", " \n"}, "", word, "txtMsgOnline");
        row("nothing for the day", "cmdSetMOTD", QStringList{"txtMsgOnline", "x"}, "", word, "txtMsgMOTD");
        const auto change = [](const char* user, const char* password, const char* again) {
            return QStringList{"txtUserName", user, "txtPWD", password, "txtConfirmPWD", again};
        };
        row("password", "cmdChangePWD", change("a&b@x", "p<w", "p<w"),
            R"(<iq type="set" id="VRX_CHANGE_USER_PWD" to="montague.example"><query )"
            R"(xmlns="jabber:iq:register"><username>a&amp;b@x</username><password>p&lt;w</password>)"
            "<resource></resource></query></iq>",
            "1 Notify: Password for a&b@x has changed !", "");
        const QString format = "4 Bad Format: Bad Username Format! Please type the complete ID, ex. someone@";
        row("no whole name", "cmdChangePWD", change("a", "p", "q"), "", format, "txtUserName");
        row("no name", "cmdChangePWD", change("", "p", "p"), "", format, "txtUserName");
        const QString cannot = "4 Can't change password!: ";
        row("not confirmed", "cmdChangePWD", change("a@x", "p", "P"), "", cannot + "Password not confirmed",
            "txtConfirmPWD");
        row("no password", "cmdChangePWD", change("a@x", "", ""), "",
            cannot + "Please, enter the new password.", "txtPWD");
    }
    void commands()
    {
        const auto [button, fields, sent, box, caret] =
            fetched<QString, QStringList, QString, QString, QString>();
        Admin f;
        for (int index = 0; index < fields.size(); index += 2)
            f.type(qPrintable(fields[index]), fields[index + 1]);
        const auto check = [&](const QString& wire, const QString& told) {
            ui::click(f.panel, qPrintable(button));
            const QString got = f.takeSent().join("").replace(QRegularExpression(" id=\"brelo\\d+\""), "");
            QCOMPARE(got, wire);
            QVERIFY2(f.boxes().startsWith(told), qPrintable(told));
        };
        check(sent, box);
        if (caret.isEmpty()) {
            f.gateway->connected = false;
            check("", "3 Attention!: You are not connected. Nothing was sent.");
        } else {
            QCOMPARE(f.preferences()->focusWidget()->objectName(), caret);
        }
        for (const char* secret : {"txtPWD", "txtConfirmPWD"})
            QCOMPARE(ui::find<QLineEdit>(f.panel, secret)->echoMode(), QLineEdit::Password);
    }

    void aRefusedPasswordIsTold()
    {
        Admin f;
        const QString answer = "<iq type='%1' id='VRX_CHANGE_USER_PWD' from='montague.example'>%2</iq>";
        f.inject(answer.arg("result", ""));
        QCOMPARE(f.boxes(), QString());
        const QString error = "<error code='403'>Forbidden</error>";
        ui::click(f.preferences(), "cmdUndo");
        for (const QString repeated : {"", "<query xmlns='jabber:iq:register'/>"}) {
            f.inject(answer.arg("error", repeated + error));
            QCOMPARE(f.boxes(), "4 Can't change password!: The server has refused it: Forbidden");
        }
    }

    void enterSendsNothing()
    {
        Admin f;
        QVERIFY(QTest::qWaitForWindowActive(f.preferences()));
        f.type("txtMsgOnline", "text");
        for (const auto& [field, next] :
             {std::pair("txtSubjectOnline", "txtMsgOnline"), std::pair("txtConfirmPWD", "cmdChangePWD")}) {
            auto* edit = ui::find<QLineEdit>(f.panel, field);
            edit->setFocus();
            QTest::keyClick(edit, Qt::Key_Return);
            QCOMPARE(f.preferences()->focusWidget()->objectName(), next);
        }
        QCOMPARE(f.takeSent(), QStringList());
        QTest::keyClick(f.preferences()->focusWidget(), Qt::Key_Return); // a button does what it says
        QVERIFY(f.boxes().contains("Bad Format"));
    }
};

BRELO_TEST(AdminTest)
#include "AdminTest.moc"
