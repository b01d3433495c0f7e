#pragma once

#include "realdesktop/DesktopTest.h"
#include "session/forms/Program.h"

class RosterForm;

// A test with the client in its own process, signed in, so that controls are found by their names.
class ClientTest : public DesktopTest
{
    Q_OBJECT

protected slots:
    void init() override;
    void cleanup() override;

protected:
    RosterForm& mainForm() const { return *program->session().windows.rosterForm(); }
    Form* form(const char* name) const;
    // Of the control that has the keyboard.
    static QString focus();

    // The pointer clicks at the control of this name, or at the contact's row.
    void click(const QWidget* form, const char* name, XDisplay::Button button = XDisplay::Left,
               int times = 1);
    void clickContact(const QString& node, XDisplay::Button button = XDisplay::Left, int times = 1);
    // The entry of the open menu.
    void clickEntry(const char* name);

    std::optional<Program> program;

private:
    void click(const QWidget* control, QPoint inside, XDisplay::Button button, int times);
};
