#pragma once

#include "preferences/forms/PreferencePanel.h"

#include <memory>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace Ui
{
class SoundUsrCtrl;
}

// The page of the sounds: a switch and a wave file for each event.
class SoundUsrCtrl : public PreferencePanel
{
    Q_OBJECT

public:
    explicit SoundUsrCtrl(Client& client);
    ~SoundUsrCtrl() override;

private:
    struct Row {
        QCheckBox* box;
        QLabel* label;
        QLineEdit* edit;
        QPushButton* browse;
        bool Settings::*sounds;
        QString Settings::*file;
    };
    void addRow(const Row& row);

    std::unique_ptr<Ui::SoundUsrCtrl> ui_;
};
