#include "preferences/forms/ResourceUsrCtrl.h"

#include "contacts/Client.h"

#include "ui_ResourceUsrCtrl.h"

namespace
{

// RFC 6121, 4.7.2.3.
bool isPriority(const QString& text)
{
    bool number = false;
    const int priority = text.trimmed().toInt(&number);
    return number && priority >= -128 && priority <= 127;
}

} // namespace

ResourceUsrCtrl::ResourceUsrCtrl(Client& client)
    : PreferencePanel(client), ui_(std::make_unique<Ui::ResourceUsrCtrl>())
{
    ui_->setupUi(this);
    bind(ui_->txtResource, &Settings::Resource);
    onSave([](Settings& settings) { settings.Resource = settings.Resource.trimmed(); });
    // Shown as it stands in the settings, a number or not.
    bind(ui_->Combo1,
         {QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("5"), QStringLiteral("10"),
          QStringLiteral("50"), QStringLiteral("100")},
         client_.settings.Priority,
         [](Settings& settings, const QString& text) { settings.Priority = text.trimmed(); });
}

ResourceUsrCtrl::~ResourceUsrCtrl() = default;

PreferencePanel::Fault ResourceUsrCtrl::fault() const
{
    if (ui_->txtResource->text().trimmed().isEmpty())
        return {tr("Please, enter a resource, for example BreloIM."), ui_->txtResource};
    const QString priority = ui_->Combo1->currentText();
    if (priority != client_.settings.Priority && !isPriority(priority))
        return {tr("The priority is a number from -128 to 127."), ui_->Combo1};
    return {};
}
