#pragma once

#include "desktop/forms/Form.h"
#include "messaging/InboundRules.h"

#include <memory>

namespace Ui
{
class JoinConferenceForm;
}
class ApplicationPlugIn;
struct Client;

// Finds a room on a server, or names a new one, and asks for it. An invitation is answered here too. The
// dialog only hides after it has asked, so that the list and the nick are there when the room answers.
class JoinConferenceForm : public Form
{
    Q_OBJECT

public:
    // Asks the server for its room services. The client must outlive the form.
    JoinConferenceForm(FormRegistry& registry, Client& client);
    ~JoinConferenceForm() override;

    // Takes the answers for the list of rooms.
    ApplicationPlugIn& browser() const;
    // The nick for the room that is being asked for.
    QString nick() const;
    // Shows what the person is invited to, in the place of an earlier invitation.
    void openInvitation(const RoomInvitation& invitation);
    // Writes a room into the boxes. Kept: a join asks for the row that is chosen, all the same.
    void nameRoom(const QString& room);

public slots:
    void cmdJoin_Click();

private:
    void Command1_Click();
    void Check1_Click();
    void ResetJoinDialog();
    // Only accepting and closing are open to the person, or everything is.
    void setSearchEnabled(bool on);
    void showParts();
    void setServer(const QString& server);
    void offerJoin(bool on);
    QString roomJid() const;

    std::unique_ptr<Ui::JoinConferenceForm> ui_;
    Client& client_;
    QString roomService_; // on which a new room lies
    bool invited_ = false;
};
