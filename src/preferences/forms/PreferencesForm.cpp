#include "preferences/forms/PreferencesForm.h"

#include "contacts/Client.h"
#include "engine/Jid.h"
#include "messaging/LongLines.h"
#include "preferences/forms/GatewayNodes.h"
#include "preferences/forms/PreferencePages.h"
#include "preferences/forms/PreferencePanel.h"
#include "services/forms/AdminUsrCtrl.h"
#include "services/forms/TransportUsrCtrl.h"

#include "ui_PreferencesForm.h"

#include <QPointer>
#include <QTreeWidgetItemIterator>

namespace
{

constexpr int tagRole = Qt::UserRole; // the name of the node's panel; empty until it is made

// Only the page on show counts for the size of the whole.
void showAlone(QStackedWidget& pages, QWidget& shown)
{
    for (int index = 0; index < pages.count(); ++index)
        pages.widget(index)->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    shown.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    pages.setCurrentWidget(&shown);
}

} // namespace

PreferencesForm::PreferencesForm(FormRegistry& registry, Client& client, SettingsStore& store)
    : Form(registry, QStringLiteral("PreferencesForm")), client_(client), store_(store),
      ui_(std::make_unique<Ui::PreferencesForm>())
{
    ui_->setupUi(this);
    for (const auto& page : preferences::pages())
        addCategory(page);
    ui_->TreeView1->expandAll();
    fitTree();
    ReloadList();
    // Room for the widest and the highest page in any font; the screen sets the bound when the form is shown.
    const QFontMetrics metrics = fontMetrics();
    resize(size().expandedTo({metrics.averageCharWidth() * 95, metrics.lineSpacing() * 38}));
    setDefaultButton(ui_->cmdOK);
    setCancelButton(ui_->cmdUndo);
    connect(ui_->TreeView1, &QTreeWidget::currentItemChanged, this, &PreferencesForm::TreeView1_Click);
    connect(ui_->TreeView1, &QTreeWidget::itemClicked, this,
            [this](const QTreeWidgetItem* node) { askGateway(*node); });
    connect(ui_->cmdOK, &QPushButton::clicked, this, &PreferencesForm::cmdOK_Click);
    connect(ui_->cmdApply, &QPushButton::clicked, this, &PreferencesForm::cmdApply_Click);
    connect(ui_->cmdUndo, &QPushButton::clicked, this, &PreferencesForm::cmdUndo_Click);
    connect(ui_->cmdRestoreRegistry, &QPushButton::clicked, this, &PreferencesForm::restoreRequested);
}

PreferencesForm::~PreferencesForm() = default;

void PreferencesForm::addCategory(const PreferencePage& page)
{
    if (findNode(page.key, false) || (page.ofAdministrators && !client_.settings.UserMode))
        return;
    auto* node = new QTreeWidgetItem({page.key});
    if (auto* parent = findNode(page.parent, false))
        parent->addChild(node);
    else
        ui_->TreeView1->addTopLevelItem(node);
}

void PreferencesForm::ReloadList()
{
    auto* tree = ui_->TreeView1;
    auto* gateways = FindNode(QStringLiteral("Gateways"));
    const auto* current = tree->currentItem();
    const bool expands = gateways->childCount() == 0;
    const auto before = nodes().size();
    {
        const QSignalBlocker quiet(tree); // a neighbour of one that went isn't chosen
        for (auto* node : gatewaynodes::reload(*gateways, client_.MyAgents)) {
            dropPanel(*node);
            delete node;
        }
        for (const auto& page : preferences::pages())
            addCategory(page);
        if (tree->currentItem() != current)
            tree->setCurrentItem(gateways);
    }
    if (tree->currentItem() != current)
        TreeView1_Click();
    if (expands)
        gateways->setExpanded(true);
    if (nodes().size() != before)
        fitTree();
}

// A gateway that went takes its panel along.
void PreferencesForm::dropPanel(const QTreeWidgetItem& node)
{
    if (auto* page = panelOf(node)) {
        ui_->PrefContainer->removeWidget(page);
        page->hide();
        page->deleteLater();
    }
}

void PreferencesForm::fitTree()
{
    auto* tree = ui_->TreeView1;
    tree->resizeColumnToContents(0);
    constexpr int air = 24;
    constexpr int most = 34; // letters: the address of a gateway may be long
    tree->setFixedWidth(qBound(170, tree->columnWidth(0) + air, fontMetrics().averageCharWidth() * most));
}

void PreferencesForm::sessionEnded()
{
    for (auto* page : ui_->PrefContainer->findChildren<TransportUsrCtrl*>())
        page->sessionEnded();
    ReloadList();
}

QList<QTreeWidgetItem*> PreferencesForm::nodes() const
{
    QList<QTreeWidgetItem*> all;
    for (QTreeWidgetItemIterator item(ui_->TreeView1); *item; ++item)
        all += *item;
    return all;
}

QTreeWidgetItem* PreferencesForm::FindNode(const QString& key) const
{
    auto* category = findNode(key, false);
    return category ? category : findNode(key, true);
}

QTreeWidgetItem* PreferencesForm::findNode(const QString& key, bool gateway) const
{
    for (auto* node : nodes()) {
        if (node->text(0) == key && gatewaynodes::isGateway(*node) == gateway)
            return node;
    }
    return nullptr;
}

void PreferencesForm::showPage(const QString& key)
{
    if (auto* node = FindNode(key)) {
        ui_->TreeView1->setCurrentItem(node);
        ui_->TreeView1->setFocus();
    }
}

QString PreferencesForm::currentPage() const
{
    return page_;
}

void PreferencesForm::TreeView1_Click()
{
    auto* node = ui_->TreeView1->currentItem();
    if (!node)
        return;
    auto* page = panelOf(*node);
    if (!page)
        page = addPanel(*node);
    page_ = node->text(0);
    // The panel of a gateway shows its address by itself.
    const auto* agent = gatewaynodes::isGateway(*node) ? client_.MyAgents.record(page_) : nullptr;
    ui_->lblPage->setText(agent && !agent->ExtName.isEmpty() ? longlines::shownLine(agent->ExtName) : page_);
    showAlone(*ui_->PrefContainer, *page);
    askGateway(*node);
}

// The form is asked for whenever the page is chosen.
void PreferencesForm::askGateway(const QTreeWidgetItem& node)
{
    const QPointer<TransportUsrCtrl> page = qobject_cast<TransportUsrCtrl*>(panelOf(node));
    if (!page || page->isWaiting())
        return;
    const QString key = node.text(0);
    const SameSession same(client_); // the animation may need a box
    page->setCurrentTransportJID(key);
    page->AssembleObject(key);
    if (page && same)
        page->GetRegister(key);
}

QWidget* PreferencesForm::panelOf(const QTreeWidgetItem& node) const
{
    const QString name = node.data(0, tagRole).toString();
    return name.isEmpty() ? nullptr
                          : ui_->PrefContainer->findChild<QWidget*>(name, Qt::FindDirectChildrenOnly);
}

PreferencePanel* PreferencesForm::savingPanelOf(const QTreeWidgetItem& node) const
{
    auto* page = qobject_cast<PreferencePanel*>(panelOf(node));
    return page && page->objectName().endsWith(QStringLiteral("PersonalN")) ? page : nullptr;
}

QWidget* PreferencesForm::panel(const QString& key) const
{
    const auto* node = FindNode(key);
    return node ? panelOf(*node) : nullptr;
}

TransportUsrCtrl* PreferencesForm::gatewayPanel(const QString& address) const
{
    const QString bare = jid::bare(address);
    for (const auto* node : nodes()) {
        if (gatewaynodes::isGateway(*node) && node->text(0).compare(bare, Qt::CaseInsensitive) == 0)
            return qobject_cast<TransportUsrCtrl*>(panelOf(*node));
    }
    return nullptr;
}

AdminUsrCtrl* PreferencesForm::adminPanel() const
{
    return qobject_cast<AdminUsrCtrl*>(panel(QStringLiteral("Server management")));
}

// A panel's name is a running number and its group.
QWidget* PreferencesForm::addPanel(QTreeWidgetItem& node)
{
    const auto* category = gatewaynodes::isGateway(node) ? nullptr : preferences::page(node.text(0));
    auto* page = category ? category->make(client_, store_).release() : new TransportUsrCtrl(client_);
    const bool personal = category && category->isPersonal();
    page->setObjectName(QString::number(made_++) +
                        (personal ? QStringLiteral("PersonalN") : QStringLiteral("GatewayN")));
    node.setData(0, tagRole, page->objectName());
    if (auto* saving = qobject_cast<PreferencePanel*>(page)) {
        connect(saving, &PreferencePanel::onTopChanged, this, &PreferencesForm::onTopChanged);
        connect(saving, &PreferencePanel::blockedListChanged, this, &PreferencesForm::blockedListChanged);
    }
    if (auto* admin = qobject_cast<AdminUsrCtrl*>(page))
        connect(admin, &AdminUsrCtrl::messageRequested, this, &PreferencesForm::messageRequested);
    ui_->PrefContainer->addWidget(page);
    putButtonsBehind(*page);
    return page;
}

// Tab goes from the tree to the page, which has come last, and then to the buttons.
void PreferencesForm::putButtonsBehind(const QWidget& page)
{
    QWidget* last = previousInFocusChain();
    while (last != this && last->focusPolicy() == Qt::NoFocus)
        last = last->previousInFocusChain();
    if (!page.isAncestorOf(last))
        return;
    for (QWidget* button : {ui_->cmdRestoreRegistry, ui_->cmdOK, ui_->cmdApply, ui_->cmdUndo}) {
        setTabOrder(last, button);
        last = button;
    }
}

void PreferencesForm::cmdApply_Click()
{
    QTreeWidgetItem* wrong = nullptr;
    for (auto* node : nodes()) {
        auto* page = savingPanelOf(*node);
        if (page && !page->SaveSettings() && !wrong)
            wrong = node;
    }
    valid_ = !wrong;
    emit applied();
    if (wrong)
        tellFault(*wrong);
}

void PreferencesForm::tellFault(QTreeWidgetItem& node)
{
    ui_->TreeView1->setCurrentItem(&node);
    const auto fault = savingPanelOf(node)->fault();
    fault.control->setFocus();
    client_.desktop.boxes->exclamation(windowTitle(), fault.text);
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
