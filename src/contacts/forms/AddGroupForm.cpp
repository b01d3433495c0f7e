#include "contacts/forms/AddGroupForm.h"

#include "contacts/Client.h"
#include "contacts/forms/Roster.h"

#include "ui_AddGroupForm.h"

AddGroupForm::AddGroupForm(FormRegistry& registry, Client& client, Roster& roster)
    : Form(registry, QStringLiteral("AddGroupForm")), client_(client), roster_(&roster),
      ui_(std::make_unique<Ui::AddGroupForm>())
{
    ui_->setupUi(this);
    setDefaultButton(ui_->cmdAddGroup);
    setCancelButton(ui_->cmdClose);
    connect(ui_->cmdAddGroup, &QPushButton::clicked, this, &AddGroupForm::cmdAddGroup_Click);
    connect(ui_->cmdClose, &QPushButton::clicked, this, [this] { requestUnload(CloseMode::Code); });
    ui_->txtGroup->setFocus();
}

AddGroupForm::~AddGroupForm() = default;

void AddGroupForm::cmdAddGroup_Click()
{
    const QString name = ui_->txtGroup->text();
    if (name.trimmed().isEmpty())
        client_.desktop.boxes->exclamation(windowTitle(), tr("Please, type a name for the group."));
    else if (!roster_ || !roster_->AddGroupItem(name))
        client_.desktop.boxes->exclamation(windowTitle(), tr("There is a group of this name already."));
    else if (!client_.MyGroups.Exists(name))
        client_.MyGroups.AddItem(name);
    // The form stays for the next name.
    ui_->txtGroup->selectAll();
    ui_->txtGroup->setFocus();
}
