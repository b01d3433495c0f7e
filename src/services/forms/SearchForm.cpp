#include "services/forms/SearchForm.h"

#include "contacts/Client.h"
#include "contacts/RosterStanzas.h"
#include "messaging/WindowTag.h"
#include "services/ContactAdding.h"
#include "services/SearchStanzas.h"
#include "ui_SearchForm.h"

namespace
{

constexpr int usualHeight = 5340 / windowtag::twipsPerPixel;

} // namespace

SearchForm::SearchForm(FormRegistry& registry, Client& client, ContactAdding& adding)
    : Form(registry, QStringLiteral("SearchForm")), ui_(std::make_unique<Ui::SearchForm>()), client_(client),
      adding_(adding)
{
    ui_->setupUi(this);
    ui_->SearchUsrCtrl1->setClient(client_);
    ui_->cmdAdd->setEnabled(false);
    ui_->CmdSearch->setEnabled(false); // there is nothing to fill in yet
    setDefaultButton(ui_->CmdSearch);
    setCancelButton(ui_->cmdClose);
    connect(ui_->CmdSearch, &QPushButton::clicked, this, &SearchForm::CmdSearch_Click);
    connect(ui_->cmdAdd, &QPushButton::clicked, this, &SearchForm::cmdAdd_Click);
    connect(ui_->cmdClose, &QPushButton::clicked, this, &QWidget::close);
    connect(ui_->SearchUsrCtrl1, &SearchUsrCtrl::formCame, this,
            [this] { ui_->CmdSearch->setEnabled(true); });
    connect(ui_->SearchUsrCtrl1, &SearchUsrCtrl::chosen, this,
            [this] { ui_->cmdAdd->setEnabled(!ui_->SearchUsrCtrl1->SelectedJID.isEmpty()); });
    connect(ui_->SearchUsrCtrl1, &SearchUsrCtrl::addRequested, this, &SearchForm::cmdAdd_Click);
    connect(ui_->SearchUsrCtrl1, &SearchUsrCtrl::messageRequested, this, &SearchForm::messageRequested);
}

SearchForm::~SearchForm() = default;

ApplicationPlugIn& SearchForm::search() const
{
    return *ui_->SearchUsrCtrl1;
}

void SearchForm::ask(const QString& directory)
{
    if (!isVisible())
        resize(width(), usualHeight);
    bringUp();
    if (!client_.isConnected() || !stanzas::send(client_, searchstanzas::init(directory)))
        return ui_->SearchUsrCtrl1->showState(tr("You are not connected."));
    ui_->CmdSearch->setEnabled(false);
    ui_->SearchUsrCtrl1->expectForm(directory);
}

void SearchForm::CmdSearch_Click()
{
    auto& search = *ui_->SearchUsrCtrl1;
    QList<searchstanzas::Field> fields;
    for (int index = 1; index <= search.FieldCount(); ++index)
        fields += {search.GetFieldName(index), search.GetFieldValue(index)};
    if (!client_.isConnected() || !stanzas::send(client_, searchstanzas::result(search.directory(), fields)))
        return search.showState(tr("You are not connected. The search was not sent."));
    search.expectResults();
}

// Back to where the search began.
void SearchForm::unload()
{
    auto* before = registry().find(QStringLiteral("SearchAddForm"));
    if (before && isActiveWindow())
        before->activateWindow();
}

void SearchForm::cmdAdd_Click()
{
    const QString jid = ui_->SearchUsrCtrl1->SelectedJID;
    const QPointer<SearchForm> self(this);
    if (adding_.add(jid) && self)
        ui_->SearchUsrCtrl1->showState(tr("%1 was asked.").arg(jid.left(200)));
}
