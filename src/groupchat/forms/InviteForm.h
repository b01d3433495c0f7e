#pragma once

#include "desktop/forms/Form.h"

#include <memory>

namespace Ui
{
class InviteForm;
}
struct Client;

// Invites a contact to a room. A room that isn't open yet is joined as well.
class InviteForm : public Form
{
    Q_OBJECT

public:
    // The client must outlive the form.
    InviteForm(FormRegistry& registry, Client& client);
    ~InviteForm() override;

    void setContact(const QString& jid);
    void setRoom(const QString& jid);

signals:
    // What was typed as the room is no address.
    void roomMisnamed();
    // The person isn't in the room to which the invitation went.
    void joinRequested(const QString& room);

private:
    void fillContacts();
    void fillRooms();
    void Command1_Click();
    bool send();

    std::unique_ptr<Ui::InviteForm> ui_;
    Client& client_;
};
