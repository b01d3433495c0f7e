#include "preferences/forms/PrivacyUsrCtrl.h"

#include "contacts/Client.h"

#include "ui_PrivacyUsrCtrl.h"

#include <QShortcut>

PrivacyUsrCtrl::PrivacyUsrCtrl(Client& client)
    : PreferencePanel(client), blocked_(client), ui_(std::make_unique<Ui::PrivacyUsrCtrl>())
{
    ui_->setupUi(this);
    connect(ui_->cmdAdd, &QPushButton::clicked, this, &PrivacyUsrCtrl::cmdAdd_Click);
    connect(ui_->cmdRemove, &QPushButton::clicked, this, &PrivacyUsrCtrl::cmdRemove_Click);
    auto* del = new QShortcut(QKeySequence::Delete, ui_->List1, nullptr, nullptr, Qt::WidgetShortcut);
    connect(del, &QShortcut::activated, this, &PrivacyUsrCtrl::cmdRemove_Click);
    tell(blocked_.load());
}

PrivacyUsrCtrl::~PrivacyUsrCtrl() = default;

void PrivacyUsrCtrl::showEvent(QShowEvent* event)
{
    fill();
    PreferencePanel::showEvent(event);
}

// Row and position in the list go together.
void PrivacyUsrCtrl::fill()
{
    ui_->List1->clear();
    for (int position = 1; position <= client_.MyBanList.Count(); ++position)
        ui_->List1->addItem(client_.MyBanList.Item(position)->JID);
}

void PrivacyUsrCtrl::cmdAdd_Click()
{
    auto& boxes = *client_.desktop.boxes;
    const auto answer = boxes.input(tr("New blocked User"),
                                    tr("Please, add the identifier of the contact to block..."), QString());
    if (!answer || answer->trimmed().isEmpty())
        return;
    const QString address = BlockedContacts::addressOf(*answer);
    if (address.isEmpty())
        return boxes.exclamation(tr("New blocked User"),
                                 tr("This is no contact's identifier: %1").arg(answer->trimmed()));
    if (blocked_.contains(address))
        return boxes.information(tr("Note !"), tr("The Contact is already Blocked!"));
    tell(blocked_.add(address));
    fill();
    ui_->List1->setCurrentRow(ui_->List1->count() - 1);
    emit blockedListChanged();
}

void PrivacyUsrCtrl::cmdRemove_Click()
{
    const int row = ui_->List1->currentRow();
    if (row < 0)
        return client_.desktop.boxes->exclamation(tr("Attention!"), tr("Please select a contac first!"));
    tell(blocked_.remove(row + 1));
    fill();
    emit blockedListChanged();
}

void PrivacyUsrCtrl::tell(const QString& error)
{
    if (!error.isEmpty())
        client_.desktop.boxes->exclamation(tr("Preferences"), error);
}
