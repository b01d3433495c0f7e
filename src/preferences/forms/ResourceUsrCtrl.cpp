#include "preferences/forms/ResourceUsrCtrl.h"

#include "contacts/Client.h"

#include "ui_ResourceUsrCtrl.h"

ResourceUsrCtrl::ResourceUsrCtrl(Client& client)
    : PreferencePanel(client), ui_(std::make_unique<Ui::ResourceUsrCtrl>())
{
    ui_->setupUi(this);
    bind(ui_->txtResource, &Settings::Resource);
    for (const int priority : {0, 1, 5, 10, 20, 50, 100})
        ui_->Combo1->addItem(QString::number(priority));
    // Shown as it stands in the settings, a number or not.
    ui_->Combo1->setEditText(client_.settings.Priority);
    onSave([this](Settings& settings) { settings.Priority = ui_->Combo1->currentText().trimmed(); });
}

ResourceUsrCtrl::~ResourceUsrCtrl() = default;

PreferencePanel::Fault ResourceUsrCtrl::fault() const
{
    if (ui_->txtResource->text().trimmed().isEmpty())
        return {tr("Please, enter a resource, for example BreloIM."), ui_->txtResource};
    bool number = false;
    const int priority = ui_->Combo1->currentText().trimmed().toInt(&number);
    if (!number || priority < -128 || priority > 127)
        return {tr("The priority is a number from -128 to 127."), ui_->Combo1};
    return {};
}
