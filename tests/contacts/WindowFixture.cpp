#include "contacts/WindowFixture.h"

#include "contacts/FixedGroups.h"

#include <QMenu>

WindowFixture::WindowFixture()
{
    client.desktop = outside.desktop();
    form = new RosterForm(registry, client);
    roster = form->Roster1;
    view = &roster->view();
    form->resize(300, 600);
    client.MyAgents.AddItem("icq.x", "ICQ", false, false)->IsTransport = true;
    client.MyRoster.AddItem("icq.x", "ICQ", false, "4", {}, true, {}, {}, {}, {});
    push("<item jid='a@x' name='Ann' subscription='both'><group>Pals</group></item>"
         "<item jid='b@x' name='Bob' subscription='both'><group>Pals</group></item>"
         "<item jid='c@x' name='Cid' subscription='both'><group>Club</group></item>"
         "<item jid='d@x' subscription='both'/>");
    roster->Refresh();
    roster->settle();
    form->show();
    (void)QTest::qWaitForWindowExposed(form);
    engine.takeSent();
}

WindowFixture::~WindowFixture()
{
    registry.deleteAllExcept(nullptr);
}

QPoint WindowFixture::place(const QString& key)
{
    roster->settle();
    auto& tree = roster->tree();
    return view->visualRect(tree.indexOf(tree.Item(tree.NodeIndexOfKey(key)))).center();
}

void WindowFixture::click(const QString& key, Qt::MouseButton button)
{
    QTest::mouseClick(view->viewport(), button, {}, key.isEmpty() ? QPoint(100, 590) : place(key));
}

void WindowFixture::drag(const QString& key, const QString& target)
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

void WindowFixture::select(const QString& key)
{
    auto& tree = roster->tree();
    roster->settle();
    view->setCurrentIndex(tree.indexOf(tree.Item(tree.NodeIndexOfKey(key))));
}

QString WindowFixture::enabledEntries()
{
    QStringList names;
    const auto entries = roster->findChild<QMenu*>("mnuContext")->actions();
    for (const QAction* entry : entries) {
        if (entry->isEnabled() && !entry->isSeparator())
            names += entry->objectName().mid(10);
    }
    return names.join(' ');
}

void WindowFixture::push(const QString& items)
{
    auto context = engine.contextFor("<iq type='set' id='push'><query xmlns='jabber:iq:roster'>" + items +
                                     "</query></iq>");
    roster->Myapplicationplugin().OnIQ(context);
}
