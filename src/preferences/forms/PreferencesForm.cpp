#include "preferences/forms/PreferencesForm.h"

#include "contacts/Client.h"
#include "preferences/PreferenceTree.h"
#include "preferences/forms/PreferencePanel.h"
#include "preferences/forms/PreferencePanels.h"

#include "ui_PreferencesForm.h"

#include <QTreeWidgetItemIterator>

namespace
{

constexpr int keyRole = Qt::UserRole;
constexpr int tagRole = Qt::UserRole + 1; // the name of the node's panel; empty until it is made

const PreferenceNode* categoryOf(const QTreeWidgetItem& item)
{
    const QString key = item.data(0, keyRole).toString();
    const auto& nodes = preferences::categories();
    const auto found =
        std::find_if(nodes.begin(), nodes.end(), [&](const PreferenceNode& node) { return node.key == key; });
    return found == nodes.end() ? nullptr : &*found;
}

} // namespace

PreferencesForm::PreferencesForm(FormRegistry& registry, Client& client)
    : Form(registry, QStringLiteral("PreferencesForm")), client_(client),
      ui_(std::make_unique<Ui::PreferencesForm>())
{
    ui_->setupUi(this);
    fillTree();
    setDefaultButton(ui_->cmdOK);
    setCancelButton(ui_->cmdUndo);
    connect(ui_->TreeView1, &QTreeWidget::currentItemChanged, this, &PreferencesForm::TreeView1_Click);
    connect(ui_->cmdOK, &QPushButton::clicked, this, &PreferencesForm::cmdOK_Click);
    connect(ui_->cmdApply, &QPushButton::clicked, this, &PreferencesForm::cmdApply_Click);
    connect(ui_->cmdUndo, &QPushButton::clicked, this, &PreferencesForm::cmdUndo_Click);
    connect(ui_->cmdRestoreRegistry, &QPushButton::clicked, this, &PreferencesForm::restoreRequested);
}

PreferencesForm::~PreferencesForm() = default;

void PreferencesForm::fillTree()
{
    for (const auto& category : preferences::categories()) {
        auto* item = new QTreeWidgetItem({category.key});
        item->setData(0, keyRole, category.key);
        if (auto* parent = FindNode(category.parent))
            parent->addChild(item);
        else
            ui_->TreeView1->addTopLevelItem(item);
    }
    ui_->TreeView1->expandAll();
}

QTreeWidgetItem* PreferencesForm::FindNode(const QString& key) const
{
    for (QTreeWidgetItemIterator item(ui_->TreeView1); *item; ++item)
        if ((*item)->data(0, keyRole).toString() == key)
            return *item;
    return nullptr;
}

bool PreferencesForm::showPage(const QString& key)
{
    auto* node = FindNode(key);
    if (!node)
        return false;
    ui_->TreeView1->setCurrentItem(node);
    TreeView1_Click();
    ui_->TreeView1->setFocus();
    return true;
}

void PreferencesForm::TreeView1_Click()
{
    auto* node = ui_->TreeView1->currentItem();
    if (!node)
        return;
    auto* page = panel(node->data(0, keyRole).toString());
    if (!page)
        page = addPanel(*node);
    ui_->lblPage->setText(node->text(0));
    ui_->PrefContainer->setCurrentWidget(page);
}

PreferencePanel* PreferencesForm::panel(const QString& key) const
{
    const auto* node = FindNode(key);
    const QString name = node ? node->data(0, tagRole).toString() : QString();
    return name.isEmpty() ? nullptr : ui_->PrefContainer->findChild<PreferencePanel*>(name);
}

PreferencePanel* PreferencesForm::addPanel(QTreeWidgetItem& node)
{
    const auto* category = categoryOf(node);
    auto* page = preferences::makePanel(category->panel, client_).release();
    page->setObjectName(preferences::panelName(ui_->PrefContainer->count(), category->personal));
    node.setData(0, tagRole, page->objectName());
    connect(page, &PreferencePanel::onTopChanged, this, &PreferencesForm::onTopChanged);
    connect(page, &PreferencePanel::blockedListChanged, this, &PreferencesForm::blockedListChanged);
    ui_->PrefContainer->addWidget(page);
    return page;
}

// A page that is at fault comes to the front; the pages behind it are saved all the same.
bool PreferencesForm::savePanels()
{
    bool valid = true;
    for (QTreeWidgetItemIterator item(ui_->TreeView1); *item; ++item) {
        const QString name = (*item)->data(0, tagRole).toString();
        auto* page = ui_->PrefContainer->findChild<PreferencePanel*>(name);
        if (name.isEmpty() || !page || !preferences::isPersonal(name) || page->SaveSettings())
            continue;
        if (valid)
            ui_->TreeView1->setCurrentItem(*item);
        valid = false;
    }
    return valid;
}

void PreferencesForm::cmdApply_Click()
{
    valid_ = savePanels();
    emit applied();
}

void PreferencesForm::cmdOK_Click()
{
    cmdApply_Click();
    if (valid_)
        requestUnload(CloseMode::Code);
}

void PreferencesForm::cmdUndo_Click()
{
    valid_ = true; // what wasn't applied is given up
    requestUnload(CloseMode::Code);
}

bool PreferencesForm::queryUnload(CloseMode mode)
{
    // The end of the program or of the system waits for nobody's page.
    if (!valid_ && mode == CloseMode::User)
        cmdApply_Click();
    return valid_ || mode != CloseMode::User;
}
