#pragma once

#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "contacts/forms/RosterView.h"
#include "desktop/forms/Form.h"
#include "support/FakeEngine.h"
#include "support/RecordingDesktop.h"
#include "support/TempProfile.h"

#include <QAction>
#include <QTest>

// The real main window of romeo@montague.example, on line, with a few contacts. Nothing was sent yet.
struct WindowFixture {
    WindowFixture();
    ~WindowFixture();

    QAction* action(const QString& name) { return form->findChild<QAction*>(name); }
    void choose(const QString& name) { action(name)->trigger(); }
    // A window of the registry, shown by a command.
    Form* window(const QString& name) { return registry.find(name); }
    // Where the node of this key is drawn.
    QPoint place(const QString& key);
    void click(const QString& key, Qt::MouseButton button = Qt::LeftButton);
    // Drags a node by the mouse; returns when the drag has ended.
    void drag(const QString& key, const QString& target);
    void select(const QString& key);
    // The entries of the contact menu that can be chosen, without "mnuContext".
    QString enabledEntries();
    void push(const QString& items);

    TempProfile profile;
    RecordingDesktop outside;
    Client client;
    FakeEngine engine{client};
    FormRegistry registry;
    RosterForm* form;
    Roster* roster;
    RosterView* view;
};
