#pragma once

#include "contacts/BlockedContacts.h"
#include "preferences/forms/PreferencePanel.h"

#include <memory>

namespace Ui
{
class PrivacyUsrCtrl;
}

// The page of the blocked contacts. What is done here is done at once.
class PrivacyUsrCtrl : public PreferencePanel
{
    Q_OBJECT

public:
    explicit PrivacyUsrCtrl(Client& client);
    ~PrivacyUsrCtrl() override;

protected:
    // Contacts can be blocked elsewhere while the page waits.
    void showEvent(QShowEvent* event) override;

private:
    void fill();
    void cmdAdd_Click();
    void cmdRemove_Click();
    // Shows the list again, with this row selected if there is one.
    void changed(int row);

    BlockedContacts blocked_;
    std::unique_ptr<Ui::PrivacyUsrCtrl> ui_;
};
