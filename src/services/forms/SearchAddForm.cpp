#include "services/forms/SearchAddForm.h"

#include "contacts/Client.h"
#include "contacts/RosterStanzas.h"
#include "engine/Jid.h"
#include "engine/StanzaError.h"
#include "services/ContactAdding.h"
#include "services/Networks.h"
#include "services/SearchStanzas.h"
#include "services/forms/AnswerWait.h"
#include "settings/Paths.h"
#include "ui_SearchAddForm.h"

namespace
{

constexpr qsizetype longestWord = 200; // characters of somebody else's that are shown

bool isServer(const QString& name)
{
    return jid::isValid(name) && !name.contains(u'@') && !name.contains(u'/');
}

// It stands for itself, though a gateway may have taken its name.
bool isOwnServer(const Client& client, const QString& name)
{
    return name == client.Gateway().Server();
}

} // namespace

SearchAddForm::SearchAddForm(FormRegistry& registry, Client& client, ContactAdding& adding)
    : Form(registry, QStringLiteral("SearchAddForm")), ui_(std::make_unique<Ui::SearchAddForm>()),
      client_(client), adding_(adding), directories_(new AnswerWait(client, this)),
      check_(new AnswerWait(client, this))
{
    ui_->setupUi(this);
    ui_->BrowseUsrCtrl1->setClient(client_);
    ui_->Image1->setBoxes(client_.desktop.boxes);
    ui_->Image1->hide();
    ui_->Label4->hide();
    ui_->cmdCancel->hide();
    tell({});
    ui_->Combo1->setCompleter(nullptr); // it would choose what nobody wrote
    ui_->Combo1->addItems(networks::choices(client_.MyAgents, client_.Gateway().Server()));
    SetServer();
    setDefaultButton(ui_->cmdAdd);
    setCancelButton(ui_->cmdClose);
    setEntry(ui_->Text1);
    setUpWaits();
    connect(ui_->Combo1, &QComboBox::currentTextChanged, this, [this] { SetServer(); });
    connect(ui_->Text1, &QLineEdit::textEdited, this, &SearchAddForm::Text1_KeyPress);
    connect(ui_->cmdAdd, &QPushButton::clicked, this, &SearchAddForm::cmdAdd_Click);
    connect(ui_->cmdAsk, &QPushButton::clicked, this, &SearchAddForm::cmdAsk_Click);
    connect(ui_->cmdCancel, &QPushButton::clicked, this, [this] { giveUp({}); });
    connect(ui_->cmdClose, &QPushButton::clicked, this, &QWidget::close);
    connect(ui_->BrowseUsrCtrl1, &BrowseUsrCtrl::opened, this, &SearchAddForm::cmdAsk_Click);
    connect(ui_->BrowseUsrCtrl1, &BrowseUsrCtrl::directoryFound, this,
            [this] { ui_->cmdAsk->setEnabled(true); });
}

SearchAddForm::~SearchAddForm() = default;

void SearchAddForm::setUpWaits()
{
    connect(directories_, &AnswerWait::late, this,
            [this] { ui_->BrowseUsrCtrl1->setHint(tr("The server has not named its directories yet.")); });
    connect(directories_, &AnswerWait::connectionLost, this,
            [this] { ui_->BrowseUsrCtrl1->setHint(tr("You are not connected any more.")); });
    connect(check_, &AnswerWait::late, this,
            [this] { tell(tr("The server has not answered yet. You can go on waiting, or cancel.")); });
    connect(check_, &AnswerWait::connectionLost, this,
            [this] { giveUp(tr("You are not connected any more.")); });
}

void SearchAddForm::expectDirectories()
{
    directories_->begin();
    ui_->BrowseUsrCtrl1->setHint(tr("Looking for directories ..."));
}

void SearchAddForm::takeDirectories(PlugInContext& context)
{
    directories_->end();
    if (context.Stanza().IqFields().Id() == u"VRX_browser")
        ui_->cmdAsk->setEnabled(true);
    ui_->BrowseUsrCtrl1->OnIQ(context);
}

void SearchAddForm::SetServer(const QString& errorText, const QString& asked)
{
    const QString chosen = ui_->Combo1->currentText();
    if (chosen == networks::otherServer())
        return askServer(errorText, asked);
    network_ = chosen;
    server_ = isOwnServer(client_, chosen) ? chosen : networks::server(client_.MyAgents, chosen);
    ui_->txtServerName->setText(server_);
}

void SearchAddForm::askServer(const QString& errorText, QString asked)
{
    const QPointer<SearchAddForm> self(this);
    const SameSession same(client_);
    QString error = errorText;
    do {
        const QString title =
            error.isEmpty() ? tr("Submitting Instant Messenger Data") : tr("Error - %1").arg(error);
        const QString prompt =
            error.isEmpty() ? tr("Please, submit the Jabber Server to which your friend connects ...")
                            : tr("Please, submit again the Jabber Server to which your friend connects ...");
        const auto answer = client_.desktop.boxes->input(title, prompt, asked);
        if (!same || !self || !registry().isLoaded(this))
            return;
        asked = answer.value_or(QString()).trimmed();
        error = tr("This is no name of a server");
    } while (!asked.isEmpty() && !isServer(asked));
    asked.isEmpty() ? leaveOther() : checkServer(asked);
}

void SearchAddForm::checkServer(const QString& server)
{
    if (!client_.isConnected() || !stanzas::send(client_, searchstanzas::checkServer(server))) {
        leaveOther();
        return tell(tr("You are not connected."));
    }
    checked_ = server;
    tell({});
    setChecking(true);
}

// The keys go from the controls that can't be used before these go, and come back before theirs go.
void SearchAddForm::setChecking(bool on)
{
    if (on) {
        ui_->cmdCancel->show();
        ui_->cmdCancel->setFocus();
    }
    for (QWidget* widget : {static_cast<QWidget*>(ui_->Text1), static_cast<QWidget*>(ui_->Combo1),
                            static_cast<QWidget*>(ui_->cmdAdd), static_cast<QWidget*>(ui_->cmdClose)})
        widget->setEnabled(!on);
    if (!on && focusWidget() == ui_->cmdCancel)
        ui_->Combo1->setFocus();
    ui_->cmdCancel->setVisible(on);
    ui_->lblwaitingcmd->setVisible(!on);
    ui_->Label4->setVisible(on);
    ui_->Image1->setVisible(on);
    setCancelButton(on ? ui_->cmdCancel : ui_->cmdClose);
    if (!on) {
        check_->end();
        return StopAnimation();
    }
    check_->begin();
    // The last, since it may show a box.
    StartAnimation(paths::applicationFolder() + QStringLiteral("/connect.gif"));
}

void SearchAddForm::takeServerCheck(PlugInContext& context)
{
    const auto& answer = context.Stanza();
    const QString server = answer.From().isEmpty() ? checked_ : answer.From();
    // The answer to a check that was given up is for nobody any more.
    if (checked_.isEmpty() || server.compare(checked_, Qt::CaseInsensitive) != 0)
        return;
    checked_.clear();
    setChecking(false);
    tell({});
    if (answer.IqFields().Type() == u"error")
        return SetServer(StanzaError::of(answer.root()).sentence().simplified().left(longestWord), server);
    if (ui_->Combo1->findText(server) < 0)
        ui_->Combo1->addItem(server);
    ui_->Combo1->setCurrentText(server);
    ui_->Text1->setFocus();
}

void SearchAddForm::giveUp(const QString& word)
{
    checked_.clear();
    setChecking(false);
    leaveOther();
    tell(word);
}

void SearchAddForm::leaveOther()
{
    ui_->Combo1->setCurrentText(network_);
}

// On a gateway the name is an address of another network, and the contact's own address has one "@" only.
void SearchAddForm::Text1_KeyPress()
{
    const QString network = ui_->Combo1->currentText();
    if (isOwnServer(client_, network) || !networks::isGateway(client_.MyAgents, network))
        return;
    auto& name = *ui_->Text1;
    const int caret = name.cursorPosition();
    for (auto at = name.text().indexOf(u'@'); at >= 0; at = name.text().indexOf(u'@')) {
        name.setSelection(int(at), 1);
        name.insert(QStringLiteral("%")); // so that it can be undone
    }
    name.setCursorPosition(caret);
}

void SearchAddForm::cmdAdd_Click()
{
    const QString name = ui_->Text1->text().trimmed();
    const QPointer<SearchAddForm> self(this);
    ui_->Text1->setFocus();
    if (server_.isEmpty() || name.isEmpty())
        return client_.desktop.boxes->critical(
            tr("IMPOSSIBLE!"), tr("Sorry, don't have the necessary data. (Read the INFO on the side !)"));
    const QString jid = name + u'@' + server_;
    const bool asked = adding_.add(jid);
    if (!self)
        return;
    ui_->Text1->selectAll();
    tell(asked ? tr("%1 was asked.").arg(jid.left(longestWord)) : QString());
}

void SearchAddForm::cmdAsk_Click()
{
    const QString directory = ui_->BrowseUsrCtrl1->SelectedJID;
    ui_->BrowseUsrCtrl1->setFocus();
    if (directory.isEmpty())
        return client_.desktop.boxes->critical(tr("Error"), tr("Attention: Nothing selected, select first!"));
    emit searchRequested(directory);
}

void SearchAddForm::StartAnimation(const QString& path)
{
    ui_->Image1->Start(path);
}

void SearchAddForm::StopAnimation()
{
    ui_->Image1->Stop();
}

void SearchAddForm::tell(const QString& text)
{
    ui_->lblState->setText(text);
    ui_->lblState->setVisible(!text.isEmpty());
}
