#pragma once

#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "contacts/forms/RosterView.h"
#include "desktop/forms/Form.h"
#include "support/FakeEngine.h"
#include "support/RecordingDesktop.h"
#include "support/Table.h"
#include "support/TempProfile.h"
#include "support/TestRunner.h"

// The real main window of romeo@montague.example, on line, with a few contacts. Nothing was sent yet.
struct WindowFixture {
    WindowFixture()
    {
        client.desktop = outside.desktop();
        form = new RosterForm(registry, client);
        roster = form->Roster1;
        view = &roster->view();
        form->resize(300, 600);
        addTransport("icq.x", "ICQ");
        push("<item jid='a@x' name='Ann' subscription='both'><group>Pals</group></item>"
             "<item jid='b@x' name='Bob' subscription='both'><group>Pals</group></item>"
             "<item jid='c@x' name='Cid' subscription='both'><group>Club</group></item>"
             "<item jid='d@x' subscription='both'/>");
        roster->InitRoster();
        roster->Refresh();
        roster->settle();
        form->show();
        (void)QTest::qWaitForWindowExposed(form);
        engine.takeSent();
    }
    ~WindowFixture() { registry.deleteAllExcept(nullptr); }

    CAgentsItem* addTransport(const QString& JID, const QString& name = {})
    {
        auto* agent = client.MyAgents.AddItem(JID, name, false, false);
        agent->IsTransport = true;
        client.MyRoster.AddItem(JID, name, false, "4", {}, true, {}, {}, {}, {});
        roster->AddItem(JID, name, "Gateways", true, false, {}, {});
        return agent;
    }
    // What the status bar says.
    QString told() { return form->findChild<QLabel*>("StatusBar1Panel1")->text(); }
    QAction* action(const QString& name) { return form->findChild<QAction*>(name); }
    void choose(const QString& name) { action(name)->trigger(); }
    // Chooses an entry of the selection's menu.
    void chooseOf(const QString& entry)
    {
        QTest::keyClick(view, Qt::Key_F10, Qt::ShiftModifier);
        contactMenu()->close();
        choose("mnuContext" + entry);
    }
    // A window of the registry, shown by a command.
    Form* window(const QString& name) { return registry.find(name); }
    QMenu* contactMenu() { return roster->findChild<QMenu*>("mnuContext"); }
    // The editor of a label; null when none is edited.
    QLineEdit* editor() { return view->findChild<QLineEdit*>(); }
    TreeNode* node(const QString& key) { return roster->tree().Item(roster->tree().NodeIndexOfKey(key)); }
    QModelIndex index(const QString& key) { return roster->tree().indexOf(node(key)); }
    // Where the node of this key is drawn.
    QPoint place(const QString& key)
    {
        roster->settle();
        return view->visualRect(index(key)).center();
    }
    void click(const QString& key, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(view->viewport(), button, {}, key.isEmpty() ? QPoint(100, 590) : place(key));
    }
    // Drags a node by the mouse; returns when the drag has ended.
    void drag(const QString& key, const QString& target)
    {
        auto* page = view->viewport();
        QTest::mousePress(page, Qt::LeftButton, {}, place(key));
        const QPointF to = place(target);
        // The first move begins a drag, the second one starts it.
        for (int move = 0; move < 2; ++move) {
            QMouseEvent moved(QEvent::MouseMove, to, page->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
            QCoreApplication::sendEvent(page, &moved);
        }
    }
    void select(const QString& key)
    {
        roster->settle();
        view->setCurrentIndex(index(key));
    }
    // The entries of the contact menu that can be chosen, without "mnuContext".
    QString enabledEntries()
    {
        QStringList names;
        for (const QAction* entry : contactMenu()->actions()) {
            if (entry->isEnabled() && !entry->isSeparator())
                names += entry->objectName().mid(10);
        }
        return names.join(' ');
    }
    void push(const QString& items)
    {
        const QString head = "<iq type='set' id='push'><query xmlns='jabber:iq:roster'>";
        auto context = engine.contextFor(head + items + "</query></iq>");
        roster->Myapplicationplugin().OnIQ(context);
    }
    // Tells what the window asks of others, each as a word or two.
    void listen(QStringList& asked)
    {
        const auto add = [&asked](const QString& what) { return [&asked, what] { asked += what; }; };
        QObject::connect(form, &RosterForm::openConversation, form, [&](const QString& jid, bool trick) {
            asked += "conversation " + jid + (trick ? " trick" : "");
        });
        QObject::connect(form, &RosterForm::showPreferences, form,
                         [&](const QString& page) { asked += "page " + page; });
        QObject::connect(form, &RosterForm::showNotices, form, add("notices"));
        QObject::connect(form, &RosterForm::findContactsRequested, form, add("find"));
        QObject::connect(form, &RosterForm::disconnectRequested, form, add("disconnect"));
        QObject::connect(form, &RosterForm::connectRequested, form, add("connect"));
        QObject::connect(form, &RosterForm::exitRequested, form, add("exit"));
    }

    TempProfile profile;
    RecordingDesktop outside;
    Client client;
    FakeEngine engine{client};
    FormRegistry registry;
    RosterForm* form;
    Roster* roster;
    RosterView* view;
};
