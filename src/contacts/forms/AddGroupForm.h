#pragma once

#include "desktop/forms/Form.h"

#include <QPointer>

#include <memory>

class Roster;
struct Client;

namespace Ui
{
class AddGroupForm;
}

// Makes groups in the contact list. They live on the server only when a contact is moved into them.
class AddGroupForm : public Form
{
    Q_OBJECT

public:
    AddGroupForm(FormRegistry& registry, Client& client, Roster& roster);
    ~AddGroupForm() override;

private:
    void cmdAddGroup_Click();

    Client& client_;
    QPointer<Roster> roster_;
    std::unique_ptr<Ui::AddGroupForm> ui_;
};
