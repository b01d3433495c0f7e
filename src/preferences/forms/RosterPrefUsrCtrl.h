#pragma once

#include "desktop/Desktop.h"
#include "preferences/forms/PreferencePanel.h"

#include <memory>

namespace Ui
{
class RosterPrefUsrCtrl;
}

// The page of the contact list's colours and font.
class RosterPrefUsrCtrl : public PreferencePanel
{
    Q_OBJECT

public:
    explicit RosterPrefUsrCtrl(Client& client);
    ~RosterPrefUsrCtrl() override;

private:
    void showColours();
    void showFont();
    void change(int& colour);
    void cmdFontOnLine_Click();

    std::unique_ptr<Ui::RosterPrefUsrCtrl> ui_;
    int online_;  // blue-green-red
    int offline_; // blue-green-red
    FontChoice font_;
};
