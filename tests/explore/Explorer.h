#pragma once

#include "StanzaMaker.h"
#include "WireGateway.h"
#include "contacts/forms/RosterForm.h"
#include "desktop/SafeLink.h"
#include "groupchat/forms/GroupchatWindowForm.h"
#include "session/forms/SignInForm.h"
#include "support/FakeClient.h"
#include "support/UiDriver.h"

#include <QXmlStreamReader>
#include <QtTest>
#include <QtWidgets>

// Somebody who uses the whole client without sense: odd stanzas, answers, losses, commands, clicks and keys
// in the order that the seed gives. What was done stands in the journal, a line each, also after a crash.
class Explorer : public QObject
{
public:
    Explorer(quint32 seed, const QString& journal) : random_(seed), maker_(random_), journal_(journal)
    {
        if (!journal_.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            qFatal("no journal");
        complaints = &journal_;
        before_ = qInstallMessageHandler(complain);
        client_ = std::make_unique<FakeClient>(Settings{}, [this] {
            auto made = std::make_unique<WireGateway>();
            gateway_ = made.get();
            return made;
        });
        client_->world.tray.reachable = maker_.chance(80);
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                &Explorer::answerNested);
        write("seed " + QString::number(seed));
    }
    ~Explorer() override
    {
        client_.reset();
        qInstallMessageHandler(before_);
        complaints = nullptr;
    }

    void step()
    {
        using Step = void (Explorer::*)();
        static constexpr std::pair<int, Step> steps[] = {
            {22, &Explorer::sayStanza},   {8, &Explorer::sayAnswer}, {1, &Explorer::changeLink},
            {14, &Explorer::choose},      {16, &Explorer::click},    {12, &Explorer::key},
            {6, &Explorer::typeText},     {8, &Explorer::row},       {4, &Explorer::moveWindow},
            {2, &Explorer::tray},         {2, &Explorer::passTime},  {6, &Explorer::meetRooms},
            {8, &Explorer::meetServices},
        };
        ++depth_;
        preset();
        if (!client_->client.isConnected() && maker_.chance(20)) {
            signIn();
        } else {
            int left = random_.bounded(109);
            for (const auto& [weight, act] : steps) {
                left -= weight;
                if (left < 0) {
                    (this->*act)();
                    break;
                }
            }
        }
        settle();
        --depth_;
    }
    // The client was told to exit.
    bool isOver() const { return client_->client.UserClosing; }
    // What must never be, whatever was done before; empty when all is well.
    QString fault()
    {
        if (!badWire_.isEmpty())
            return "sent what is not one element: " + badWire_;
        const auto& links = client_->world.links.opened;
        for (const auto& link : links) {
            if (!isSafeLink(link))
                return "opened " + link;
        }
        if (isOver())
            return {};
        if (client_->client.isConnected() && client_->ui->isInitiated() && !client_->rosterForm())
            return "signed in without a main window";
        if (windows().isEmpty() && !client_->rosterForm() && !client_->world.tray.reachable)
            return "no window is left";
        for (const auto* form : windows()) {
            if (form->windowTitle().isEmpty())
                return "no title: " + form->objectName();
        }
        for (const auto* room : rooms()) {
            if (room->isHidden() && !room->hasLeftFor(0))
                return "a room that nobody left is hidden: " + room->Tag;
        }
        return windows().size() > 100 ? "a hundred windows stand open" : QString();
    }
    // Signs in anew and takes a message: the faults of a client that has got stuck, empty when it hasn't.
    QString faultOfNewSession()
    {
        write("a new session");
        while (auto* popup = QApplication::activePopupWidget())
            popup->close();
        if (gateway_->connected)
            client_->ui->end.returnToSignIn();
        client_->signInForm().show();
        client_->world.network.online = true;
        client_->world.boxes.answers = {};
        client_->world.boxes.meanwhile = {};
        // A click by a mnemonic ends some time after it began, and may still cancel.
        const auto isIn = [this] {
            if (!client_->client.isConnected())
                signIn();
            return client_->client.isConnected() && client_->ui->isInitiated();
        };
        if (!QTest::qWaitFor(isIn))
            return "can't sign in";
        gateway_->receive("<iq type='set' id='push'><query xmlns='jabber:iq:roster'><item name='F' "
                          "jid='faithful@montague.example' subscription='both'><group>Friends</group>"
                          "</item></query></iq><message from='faithful@montague.example/a' type='chat'>"
                          "<body>still here</body></message>");
        settle();
        for (const auto* form : client_->registry.loaded()) {
            for (const auto* text : form->findChildren<QPlainTextEdit*>())
                if (text->toPlainText().contains("still here"))
                    return {};
        }
        return "a message did not arrive";
    }

private:
    // Strictly one element and nothing beside it.
    static bool isOneElement(const QString& text)
    {
        QXmlStreamReader reader(text);
        while (!reader.atEnd()) {
            const auto token = reader.readNext();
            if (token == QXmlStreamReader::DTD || token == QXmlStreamReader::ProcessingInstruction)
                return false;
        }
        return !reader.hasError();
    }
    static QString nameOf(const QWidget* control)
    {
        return control->window()->objectName() + ' ' + control->objectName() + ' ' +
               QString::fromLatin1(control->metaObject()->className());
    }
    // What ends a session or the program; a walk would do little else.
    static bool isEnd(const QString& caption)
    {
        static const QStringList ends{"Exit", "Disconnect", "Connect", "Cancel"};
        return ends.contains(QString(caption).remove(u'&').section(u' ', 0, 0));
    }
    // What the toolkit complains of stands in the journal.
    static inline QFile* complaints = nullptr;

    static void complain(QtMsgType, const QMessageLogContext&, const QString& text)
    {
        if (complaints && !text.startsWith(QStringLiteral("This plugin does not support")))
            complaints->write("  says: " + text.toUtf8() + '\n');
    }
    void write(const QString& what) { journal_.write(what.toUtf8().replace('\n', ' ').left(2000) + '\n'); }

    QList<Form*> windows() const
    {
        auto all = client_->registry.loaded();
        all.removeIf([](const Form* form) { return !form->isVisible(); });
        return all;
    }
    QList<GroupchatWindowForm*> rooms() const
    {
        QList<GroupchatWindowForm*> all;
        for (auto* form : client_->registry.loaded()) {
            if (auto* room = qobject_cast<GroupchatWindowForm*>(form))
                all += room;
        }
        return all;
    }
    Form* window()
    {
        const auto all = windows();
        return all.isEmpty() ? nullptr : maker_.one(all);
    }
    // What the boxes of the next step are answered, and what happens while they stand.
    void preset()
    {
        using Answer = MessageBoxes::Answer;
        static const QList<Answer> answers{Answer::Ok, Answer::Cancel, Answer::Yes, Answer::No};
        auto& world = client_->world;
        world.boxes.shown.clear();
        world.boxes.answers = {maker_.one(answers), maker_.one(answers), maker_.one(answers)};
        world.boxes.inputs = {maker_.chance(50) ? std::optional(maker_.jid()) : std::nullopt};
        world.network.online = maker_.chance(95);
        world.looks.fonts = {{"Sans", 1.0 + random_.bounded(40), false, true}};
        world.looks.colours = {random_.bounded(0x1000000)};
        world.files.answers = {maker_.text()};
        world.boxes.meanwhile = [this] {
            write("  a box stands");
            if (maker_.chance(50))
                sayStanza();
            if (maker_.chance(10))
                changeLink();
            if (maker_.chance(20) && depth_ < 3)
                step();
        };
    }
    void settle()
    {
        nested_ = 0;
        const auto waiting = [this] { return client_->client.Core->PluginManager->Queue()->inboundCount(); };
        // Under a question about a stanza the others wait.
        for (int vain = 0; vain < 3 && !isOver();) {
            const auto before = waiting();
            client_->client.Core->tick();
            QCoreApplication::processEvents();
            if (isOver() || waiting() == 0)
                break;
            vain = waiting() < before ? 0 : vain + 1;
        }
        QCoreApplication::processEvents();
        for (const auto& text : gateway_->takeWire()) {
            if (!isOneElement(text) && badWire_.isEmpty())
                badWire_ = text;
            if (text.startsWith(u"<iq") && (text.contains(u"\"get\"") || text.contains(u"\"set\"")))
                requests_ << text;
        }
        requests_ = requests_.last(std::min(requests_.size(), qsizetype(20)));
    }
    // A menu or a dialog waits in a loop of its own.
    void answerNested()
    {
        auto* const waiting = QApplication::activePopupWidget() ? QApplication::activePopupWidget()
                                                                : QApplication::activeModalWidget();
        if (depth_ == 0 || !waiting)
            return;
        write(QStringLiteral("  nested ") + waiting->metaObject()->className());
        if (++nested_ > 8) {
            waiting->close();
            return;
        }
        if (maker_.chance(10))
            sayStanza();
        static constexpr Qt::Key keys[] = {Qt::Key_Down, Qt::Key_Up, Qt::Key_Return, Qt::Key_Escape,
                                           Qt::Key_Tab};
        const QPointer<QWidget> still(waiting);
        QTest::keyClick(waiting, maker_.one(keys));
        if (still && still->isVisible() && maker_.chance(30))
            still->close();
    }
    void signIn()
    {
        auto& form = client_->signInForm();
        if (!form.isVisible())
            return;
        write("sign in");
        ui::type(&form, "txtUserName", "romeo");
        ui::type(&form, "txtServer", "montague.example");
        QTest::keyClick(&form, Qt::Key_Return);
        settle();
        write(QString("  connects %1, connected %2").arg(gateway_->connects).arg(gateway_->connected));
        if (gateway_->connects == 0 || gateway_->connected)
            return;
        gateway_->open(client_->client.ownFullJid(), "montague.example");
        settle();
        gateway_->receive("<iq type='result' id='brelo-roster'><query xmlns='jabber:iq:roster'>"
                          "<item jid='juliet@montague.example' name='Juliet' subscription='both'>"
                          "<group>Friends</group></item></query></iq>");
        settle();
        gateway_->receive("<iq type='error' from='montague.example' id='brelo-q1'><error code='503'/></iq>");
        settle();
        gateway_->receive("<iq type='result' from='montague.example' id='brelo-agents'>"
                          "<query xmlns='jabber:iq:agents'><agent jid='icq.montague.example'><name>ICQ</name>"
                          "<service>icq</service><transport/><register/></agent></query></iq>");
    }
    void sayStanza()
    {
        if (!gateway_->connected)
            return;
        bool whole = true;
        for (int left = random_.bounded(1, 6); whole && left > 0; --left) {
            const auto text = maker_.stanza();
            write("in " + QString::fromUtf8(text));
            whole = gateway_->receive(text);
        }
    }
    void sayAnswer()
    {
        if (!gateway_->connected || requests_.isEmpty())
            return;
        const auto text = maker_.answer(requests_.takeAt(random_.bounded(int(requests_.size()))));
        write("answer " + QString::fromUtf8(text));
        gateway_->receive(text);
    }
    // Accepts an invitation, is let in, talks, and hears what goes on in the room.
    void meetRooms()
    {
        for (int left = random_.bounded(1, 6); left > 0 && gateway_->connected && !isOver(); --left) {
            meetRoom();
            settle();
        }
    }
    void meetRoom()
    {
        auto* const join = client_->form("JoinConferenceForm");
        const auto open = rooms();
        if (join && join->isVisible() && ui::find<QPushButton>(join, "cmdJoin")->isEnabled()) {
            write("join");
            return ui::click(join, "cmdJoin");
        }
        for (const auto& request : requests_.filter("jabber:iq:conference")) {
            requests_.removeOne(request);
            return hear(maker_.answer(request));
        }
        if (open.isEmpty() || maker_.chance(10))
            return hear(maker_.invitation());
        const QString room = maker_.one(open)->Tag;
        for (int left = random_.bounded(1, 6); left > 0; --left)
            hear(maker_.ofRoom(room));
    }
    // Opens a page or a search, hears of calls and gateways, and gets what was asked.
    void meetServices()
    {
        auto& windows = client_->ui->windows;
        for (int left = random_.bounded(1, 6); left > 0 && gateway_->connected && !isOver(); --left) {
            switch (random_.bounded(client_->ui->isInitiated() ? 6 : 2)) {
            case 0:
                hear(maker_.call());
                break;
            case 1:
                hear(maker_.services());
                break;
            case 2:
                write("page");
                windows.preferences.show(
                    maker_.one(QStringList{"icq.montague.example", "Server management"}));
                break;
            case 3:
                write("find");
                windows.services.search.show();
                break;
            default:
                const auto asked = requests_.filter(QRegularExpression("jabber:iq:(register|search|browse)"));
                if (!asked.isEmpty()) {
                    requests_.removeOne(asked.last());
                    hear(maker_.answer(asked.last()));
                }
            }
            settle();
        }
    }
    void hear(const QByteArray& text)
    {
        write("in " + QString::fromUtf8(text));
        gateway_->receive(text);
    }
    void changeLink()
    {
        if (!gateway_->connected)
            return signIn();
        write("link lost");
        gateway_->lose();
    }
    // Any control of a window that a person could use now and that `fits`.
    template <typename Control, typename Fits>
    Control* any(const Fits& fits)
    {
        const auto* form = window();
        if (!form)
            return nullptr;
        auto all = form->findChildren<Control*>();
        all.removeIf([&](const Control* control) {
            return !control->isVisible() || !control->isEnabled() || !fits(control);
        });
        return all.isEmpty() ? nullptr : maker_.one(all);
    }
    void choose()
    {
        auto* action = any<QAction>([this](const QAction* entry) {
            return !entry->menu() && !entry->isSeparator() && (!isEnd(entry->text()) || maker_.chance(3));
        });
        if (!action)
            return;
        write("choose " + action->objectName() + ' ' + action->text());
        action->trigger();
    }
    void click()
    {
        auto* control = any<QWidget>([this](const QWidget* widget) {
            const auto* button = qobject_cast<const QAbstractButton*>(widget);
            return !button || !isEnd(button->text()) || maker_.chance(3);
        });
        if (!control)
            return;
        write("click " + nameOf(control));
        const QPoint at = ui::activePart(control);
        const int kind = random_.bounded(10);
        if (kind < 7)
            QTest::mouseClick(control, Qt::LeftButton, {}, at);
        else if (kind < 8)
            QTest::mouseDClick(control, Qt::LeftButton, {}, at);
        else
            askMenu(control, at);
    }
    void askMenu(QWidget* control, const QPoint& at)
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, control->mapToGlobal(at));
        QCoreApplication::sendEvent(control, &event);
    }
    void key()
    {
        static constexpr Qt::Key keys[] = {Qt::Key_Tab, Qt::Key_Return, Qt::Key_Escape, Qt::Key_Space,
                                           Qt::Key_Up,  Qt::Key_Down,   Qt::Key_Left,   Qt::Key_Right,
                                           Qt::Key_F2,  Qt::Key_F5,     Qt::Key_F10,    Qt::Key_Delete,
                                           Qt::Key_A,   Qt::Key_C,      Qt::Key_F,      Qt::Key_H,
                                           Qt::Key_S,   Qt::Key_V,      Qt::Key_X,      Qt::Key_Home};
        static constexpr Qt::KeyboardModifier modifiers[] = {
            Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier};
        auto* target = QApplication::focusWidget();
        if (const auto* form = window(); form && (!target || maker_.chance(20)))
            target = form->focusWidget();
        if (!target)
            return;
        const auto pressed = maker_.one(keys);
        const auto with = maker_.one(modifiers);
        write("key " + nameOf(target) + ' ' + QKeySequence(int(with) | pressed).toString());
        QTest::keyClick(target, pressed, with);
    }
    void typeText()
    {
        const QPointer<QWidget> control = any<QWidget>(
            [](const QWidget* widget) { return widget->testAttribute(Qt::WA_InputMethodEnabled); });
        if (!control)
            return;
        const QString text = maker_.text();
        write("type " + nameOf(control) + ' ' + text);
        control->setFocus();
        QInputMethodEvent event;
        event.setCommitString(text);
        QCoreApplication::sendEvent(control, &event);
        if (control && control->isVisible() && maker_.chance(40))
            QTest::keyClick(control, Qt::Key_Return);
    }
    void row()
    {
        auto* view = any<QAbstractItemView>([](const QAbstractItemView* list) { return list->model(); });
        if (!view)
            return;
        auto index = view->rootIndex();
        for (int depth = random_.bounded(3); depth >= 0; --depth) {
            if (const int rows = view->model()->rowCount(index))
                index = view->model()->index(random_.bounded(rows), 0, index);
        }
        write("row " + nameOf(view) + ' ' + index.data().toString());
        view->setCurrentIndex(index);
        const QPoint at = view->visualRect(index).center();
        if (maker_.chance(40))
            QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, at);
        else if (maker_.chance(40))
            askMenu(view->viewport(), at);
    }
    void moveWindow()
    {
        auto* form = window();
        if (!form || form == &client_->signInForm())
            return;
        write("window " + form->objectName());
        switch (random_.bounded(5)) {
        case 0:
            return form->showMinimized();
        case 1:
            return form->showNormal();
        case 2:
            return form->resize(random_.bounded(1, 2000), random_.bounded(1, 2000));
        case 3:
            return form->activateWindow();
        default:
            form->close();
        }
    }
    void tray()
    {
        if (!client_->world.tray.reachable)
            return;
        write("tray");
        auto actions = client_->menus.menu()->findChildren<QAction*>();
        actions.removeIf([](const QAction* action) {
            return !action->isEnabled() || !action->isVisible() || action->menu() || isEnd(action->text());
        });
        if (maker_.chance(30) || actions.isEmpty())
            client_->trayControl->onDoubleClick();
        else
            maker_.one(actions)->trigger();
    }
    void passTime()
    {
        write("time");
        now_ += random_.bounded(40'000);
        client_->world.clock.time = client_->world.clock.time.addMSecs(random_.bounded(700'000));
        client_->world.pointer.at = {random_.bounded(1000), random_.bounded(1000)};
        if (gateway_->connected)
            gateway_->pass(now_);
    }

    QRandomGenerator random_;
    StanzaMaker maker_;
    QFile journal_;
    QtMessageHandler before_ = nullptr;
    WireGateway* gateway_ = nullptr;
    std::unique_ptr<FakeClient> client_;
    QStringList requests_;
    QString badWire_;
    qint64 now_ = 0;
    int depth_ = 0;
    int nested_ = 0;
};
