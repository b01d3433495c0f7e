#include "preferences/forms/SoundUsrCtrl.h"

#include "contacts/Client.h"

#include "ui_SoundUsrCtrl.h"

SoundUsrCtrl::SoundUsrCtrl(Client& client)
    : PreferencePanel(client), ui_(std::make_unique<Ui::SoundUsrCtrl>())
{
    ui_->setupUi(this);
    addRow({ui_->Check1, ui_->lbltxtMsgSoundPath, ui_->txtMsgSoundPath, ui_->cmdBrowseSM,
            &Settings::SoundOnNewMessage, &Settings::SoundOnNewMessageFile});
    addRow({ui_->Check2, ui_->lblText1, ui_->Text1, ui_->Command1, &Settings::SoundOnOnLine,
            &Settings::SoundOnOnLineFile});
    addRow({ui_->Check3, ui_->lblText2, ui_->Text2, ui_->Command2, &Settings::SoundOnOffLine,
            &Settings::SoundOnOffLineFile});
}

SoundUsrCtrl::~SoundUsrCtrl() = default;

void SoundUsrCtrl::addRow(const Row& row)
{
    bind(row.box, row.sounds);
    follow(row.box, {row.label, row.edit, row.browse});
    // The file that was set before comes back with the switch.
    const auto showFile = [this, row](bool on) {
        if (on && row.edit->text().isEmpty())
            row.edit->setText(client_.settings.*row.file);
    };
    showFile(row.box->isChecked());
    connect(row.box, &QCheckBox::toggled, this, showFile);
    connect(row.browse, &QPushButton::clicked, this, [this, row] {
        const QString chosen = client_.desktop.files->ChooseWaveFile();
        if (!chosen.isEmpty())
            row.edit->setText(chosen);
    });
    onSave([row](Settings& settings) {
        if (row.box->isChecked())
            settings.*row.file = row.edit->text();
    });
}
