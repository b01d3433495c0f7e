#include "preferences/forms/PreferencesForm.h"

#include "contacts/Client.h"
#include "preferences/forms/PreferencePages.h"
#include "preferences/forms/PreferencePanel.h"

#include "ui_PreferencesForm.h"

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
    fillTree();
    // Room for the widest page in any font; the screen sets the bound when the form is shown.
    const QFontMetrics metrics = fontMetrics();
    resize(size().expandedTo({metrics.averageCharWidth() * 95, metrics.lineSpacing() * 28}));
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
    auto* tree = ui_->TreeView1;
    for (const auto& page : preferences::pages()) {
        auto* item = new QTreeWidgetItem({page.key});
        if (auto* parent = FindNode(page.parent))
            parent->addChild(item);
        else
            tree->addTopLevelItem(item);
    }
    tree->expandAll();
    tree->resizeColumnToContents(0);
    constexpr int air = 24;
    tree->setFixedWidth(qMax(170, tree->columnWidth(0) + air));
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
    for (auto* node : nodes())
        if (node->text(0) == key)
            return node;
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
    return ui_->lblPage->text();
}

void PreferencesForm::TreeView1_Click()
{
    auto* node = ui_->TreeView1->currentItem();
    if (!node)
        return;
    auto* page = panelOf(*node);
    if (!page)
        page = addPanel(*node);
    ui_->lblPage->setText(node->text(0));
    showAlone(*ui_->PrefContainer, *page);
}

PreferencePanel* PreferencesForm::panelOf(const QTreeWidgetItem& node) const
{
    const QString name = node.data(0, tagRole).toString();
    return name.isEmpty() ? nullptr : ui_->PrefContainer->findChild<PreferencePanel*>(name);
}

PreferencePanel* PreferencesForm::panel(const QString& key) const
{
    const auto* node = FindNode(key);
    return node ? panelOf(*node) : nullptr;
}

// A panel's name is a running number and its group.
PreferencePanel* PreferencesForm::addPanel(QTreeWidgetItem& node)
{
    const auto& category = *preferences::page(node.text(0));
    auto* page = category.make(client_, store_).release();
    page->setObjectName(QString::number(ui_->PrefContainer->count()) +
                        (category.isPersonal() ? QStringLiteral("PersonalN") : QStringLiteral("GatewayN")));
    node.setData(0, tagRole, page->objectName());
    connect(page, &PreferencePanel::onTopChanged, this, &PreferencesForm::onTopChanged);
    connect(page, &PreferencePanel::blockedListChanged, this, &PreferencesForm::blockedListChanged);
    ui_->PrefContainer->addWidget(page);
    putButtonsBehind(*page);
    return page;
}

// Tab goes from the tree to the page, which has come last, and then to the buttons.
void PreferencesForm::putButtonsBehind(const PreferencePanel& page)
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
        auto* page = panelOf(*node);
        const bool saves = page && page->objectName().endsWith(QStringLiteral("PersonalN"));
        if (saves && !page->SaveSettings() && !wrong)
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
    const auto fault = panelOf(node)->fault();
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
