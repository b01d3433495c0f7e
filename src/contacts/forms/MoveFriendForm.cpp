#include "contacts/forms/MoveFriendForm.h"

#include "contacts/Client.h"
#include "contacts/ContactTree.h"
#include "contacts/RosterStanzas.h"

#include "ui_MoveFriendForm.h"

#include <QCompleter>

namespace
{

// The free text that belongs to a control.
constexpr char tagProperty[] = "Tag";

} // namespace

MoveFriendForm::MoveFriendForm(FormRegistry& registry, Client& client)
    : Form(registry, QStringLiteral("MoveFriendForm")), client_(client),
      ui_(std::make_unique<Ui::MoveFriendForm>())
{
    ui_->setupUi(this);
    setDefaultButton(ui_->cmdMoveGroup);
    setCancelButton(ui_->cmdClose);
    connect(ui_->cmdMoveGroup, &QPushButton::clicked, this, &MoveFriendForm::cmdMoveGroup_Click);
    connect(ui_->cmdClose, &QPushButton::clicked, this, [this] { requestUnload(CloseMode::Code); });
    for (int group = 1; group <= client_.MyGroups.Count(); ++group)
        ui_->combogroup->addItem(client_.MyGroups.Item(group)->ExtName);
    ui_->combogroup->setCurrentIndex(-1);
    // A group that begins like another is taken as it was typed.
    ui_->combogroup->completer()->setCompletionMode(QCompleter::PopupCompletion);
    ui_->combogroup->setFocus();
}

MoveFriendForm::~MoveFriendForm() = default;

void MoveFriendForm::setContact(const TreeNode& node)
{
    const QString& group = node.parent->key;
    ui_->Friends->setText(node.text);
    ui_->Friends->setProperty(tagProperty, node.key);
    ui_->OldGroup->setText(group);
    // The default group of older lists must not vanish.
    ui_->OldGroup->setProperty(tagProperty, group == u"Amici" ? QString() : group);
    Tag = node.parent->children.size() == 1 ? QStringLiteral("LASTITEMINGROUP") : QString();
}

void MoveFriendForm::cmdMoveGroup_Click()
{
    const QString JID = ui_->Friends->property(tagProperty).toString();
    const QString old = ui_->OldGroup->property(tagProperty).toString();
    const QString group = ui_->combogroup->currentText();
    if (auto* item = client_.MyRoster.record(JID)) {
        item->group = group;
        if (Tag == u"LASTITEMINGROUP" && !old.isEmpty())
            client_.MyGroups.Remove(client_.MyGroups.FindGroup(old));
        if (stanzas::send(client_, stanzas::moveContact(JID, item->nick, group)))
            emit told(tr("Asked to move %1.").arg(ui_->Friends->text()));
    }
    requestUnload(CloseMode::Code);
}
