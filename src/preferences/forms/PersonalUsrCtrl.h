#pragma once

#include "preferences/StatusLibrary.h"
#include "preferences/forms/PreferencePanel.h"

#include <memory>

namespace Ui
{
class PersonalUsrCtrl;
}

// The page of the prepared status texts. What is done here is done at once.
class PersonalUsrCtrl : public PreferencePanel
{
    Q_OBJECT

public:
    explicit PersonalUsrCtrl(Client& client);
    ~PersonalUsrCtrl() override;

private:
    void fillMessages();
    void MessList_Click();
    void Command1_Click();
    void Command2_Click();
    void keepOnTop(bool on);

    StatusLibrary library_;
    std::unique_ptr<Ui::PersonalUsrCtrl> ui_;
};
