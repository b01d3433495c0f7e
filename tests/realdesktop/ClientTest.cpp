#include "realdesktop/ClientTest.h"

#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "contacts/forms/RosterView.h"
#include "session/forms/SignInForm.h"
#include "support/UiDriver.h"

#include <QApplication>
#include <QMenu>

void ClientTest::init()
{
    DesktopTest::init();
    program.emplace();
    QVERIFY(program->start());
    const auto& form = program->session().windows.signIn();
    ui::type(&form, "txtUserName", "romeo");
    ui::type(&form, "txtPassword", "secret");
    ui::type(&form, "txtServer", address());
    ui::click(&form, "Connect");
    QVERIFY(SOON(isActive(main()) && !x.window("Connection status") && x.trayIcon()));
}

void ClientTest::cleanup()
{
    DesktopTest::cleanup();
    program.reset();
}

Form* ClientTest::form(const char* name) const
{
    return program->session().windows.registry().find(QLatin1String(name));
}

QString ClientTest::focus()
{
    return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
}

void ClientTest::click(const QWidget* form, const char* name, XDisplay::Button button, int times)
{
    const auto* control = ui::find<QWidget>(form, name);
    click(control, ui::activePart(control), button, times);
}

void ClientTest::clickContact(const QString& node, XDisplay::Button button, int times)
{
    auto& list = *mainForm().Roster1;
    list.settle();
    const int row = list.tree().NodeIndexOfKey(node + "@127.0.0.1");
    const QRect place = list.view().visualRect(list.tree().indexOf(list.tree().Item(row)));
    click(list.view().viewport(), place.center(), button, times);
}

void ClientTest::clickEntry(const char* name)
{
    const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    click(menu, menu->actionGeometry(ui::find<QAction>(menu, name)).center(), XDisplay::Left, 1);
}

// Where the window really is, whatever the toolkit believes.
void ClientTest::click(const QWidget* control, QPoint inside, XDisplay::Button button, int times)
{
    const auto* window = control->window();
    x.click(x.place(XDisplay::Window(window->winId())).topLeft() + control->mapTo(window, inside), button,
            times);
}
