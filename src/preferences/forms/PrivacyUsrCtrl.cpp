#include "preferences/forms/PrivacyUsrCtrl.h"

#include "contacts/Client.h"

#include "ui_PrivacyUsrCtrl.h"

#include <QShortcut>
#include <QTimer>

PrivacyUsrCtrl::PrivacyUsrCtrl(Client& client)
    : PreferencePanel(client), blocked_(client), ui_(std::make_unique<Ui::PrivacyUsrCtrl>())
{
    ui_->setupUi(this);
    connect(ui_->cmdAdd, &QPushButton::clicked, this, &PrivacyUsrCtrl::cmdAdd_Click);
    connect(ui_->cmdRemove, &QPushButton::clicked, this, &PrivacyUsrCtrl::cmdRemove_Click);
    auto* del = new QShortcut(QKeySequence::Delete, ui_->List1, nullptr, nullptr, Qt::WidgetShortcut);
    connect(del, &QShortcut::activated, this, &PrivacyUsrCtrl::cmdRemove_Click);
}

PrivacyUsrCtrl::~PrivacyUsrCtrl() = default;

void PrivacyUsrCtrl::showEvent(QShowEvent* event)
{
    const QString error = blocked_.load();
    fill();
    PreferencePanel::showEvent(event);
    QTimer::singleShot(0, this, [this, error] { tell(error); }); // the page comes first
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
    const QString title = tr("New blocked User");
    const SameSession same(client_);
    QString typed;
    QString address;
    while (address.isEmpty()) {
        const auto answer =
            boxes.input(title, tr("Please, add the identifier of the contact to block..."), typed);
        typed = answer.value_or(QString()).trimmed();
        if (typed.isEmpty())
            return;
        address = BlockedContacts::addressOf(typed);
        if (address.isEmpty())
            boxes.exclamation(title, tr("This is no contact's identifier: %1").arg(typed));
    }
    if (blocked_.contains(address))
        return boxes.information(tr("Note !"), tr("The Contact is already Blocked!"));
    tell(blocked_.add(address)); // holds whatever became of the session
    if (same)
        changed(ui_->List1->count());
}

void PrivacyUsrCtrl::cmdRemove_Click()
{
    const auto selected = ui_->List1->selectedItems();
    if (selected.isEmpty())
        return client_.desktop.boxes->exclamation(tr("Attention!"), tr("Please select a contac first!"));
    const int row = ui_->List1->row(selected.first());
    const SameSession same(client_);
    tell(blocked_.remove(row + 1));
    if (same)
        changed(row);
}

void PrivacyUsrCtrl::changed(int row)
{
    fill();
    ui_->List1->setCurrentRow(qMin(row, ui_->List1->count() - 1));
    emit blockedListChanged();
}
