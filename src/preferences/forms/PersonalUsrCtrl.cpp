#include "preferences/forms/PersonalUsrCtrl.h"

#include "contacts/Client.h"

#include "ui_PersonalUsrCtrl.h"

#include <QSignalBlocker>
#include <QTimer>

PersonalUsrCtrl::PersonalUsrCtrl(Client& client)
    : PreferencePanel(client), ui_(std::make_unique<Ui::PersonalUsrCtrl>())
{
    ui_->setupUi(this);
    // Told once the page is there.
    if (const QString damage = library_.renew(); !damage.isEmpty())
        QTimer::singleShot(0, this, [this, damage] { tell(damage); });
    ui_->ComboStatus->addItems(library_.states());
    (client_.settings.OnTop ? ui_->chkAlwaysOnTop : ui_->chkWndNotOnTop)->setChecked(true);
    connect(ui_->ComboStatus, &QComboBox::currentTextChanged, this, &PersonalUsrCtrl::fillMessages);
    connect(ui_->MessList, &QListWidget::itemSelectionChanged, this, &PersonalUsrCtrl::MessList_Click);
    connect(ui_->Command1, &QPushButton::clicked, this, &PersonalUsrCtrl::Command1_Click);
    connect(ui_->Command2, &QPushButton::clicked, this, &PersonalUsrCtrl::Command2_Click);
    connect(ui_->chkAlwaysOnTop, &QRadioButton::toggled, this, &PersonalUsrCtrl::keepOnTop);
    fillMessages();
}

PersonalUsrCtrl::~PersonalUsrCtrl() = default;

// The text in use is the selected one.
void PersonalUsrCtrl::fillMessages()
{
    const QSignalBlocker quiet(ui_->MessList);
    const QString state = ui_->ComboStatus->currentText();
    ui_->MessList->clear();
    ui_->MessList->addItems(library_.messages(state));
    if (const QString* current = StatusLibrary::current(client_, state))
        for (auto* item : ui_->MessList->findItems(*current, Qt::MatchFixedString | Qt::MatchCaseSensitive))
            ui_->MessList->setCurrentItem(item);
}

void PersonalUsrCtrl::MessList_Click()
{
    for (const auto* item : ui_->MessList->selectedItems())
        StatusLibrary::choose(client_, ui_->ComboStatus->currentText(), item->text());
}

void PersonalUsrCtrl::Command1_Click()
{
    const QString title = tr("Add Status Messages");
    const auto text = client_.desktop.boxes->input(title, tr("Enter a message ..."), QString());
    if (!text || text->trimmed().isEmpty())
        return;
    tell(library_.add(ui_->ComboStatus->currentText(), text->trimmed()));
    fillMessages();
}

void PersonalUsrCtrl::Command2_Click()
{
    const auto selected = ui_->MessList->selectedItems();
    if (selected.isEmpty())
        return;
    tell(library_.remove(ui_->ComboStatus->currentText(), ui_->MessList->row(selected.first())));
    fillMessages();
}

void PersonalUsrCtrl::keepOnTop(bool on)
{
    client_.settings.OnTop = on;
    emit onTopChanged();
}
