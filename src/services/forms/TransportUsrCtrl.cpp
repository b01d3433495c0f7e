#include "services/forms/TransportUsrCtrl.h"

#include "contacts/Client.h"
#include "contacts/RosterStanzas.h"
#include "engine/StanzaError.h"
#include "messaging/LongLines.h"
#include "services/forms/InstructionArea.h"
#include "settings/Paths.h"
#include "ui_TransportUsrCtrl.h"

#include <QKeyEvent>
#include <QPointer>

#include <algorithm>

namespace
{

constexpr QColor registeredColour(85, 126, 186);

QString animation()
{
    return paths::applicationFolder() + QStringLiteral("/connect.gif");
}

// Names of any length leave the fields their room.
QString caption(const QString& name)
{
    constexpr qsizetype longest = 40;
    return name.size() > longest ? name.left(longest) + QStringLiteral("...") : name;
}

QString givenUp()
{
    return TransportUsrCtrl::tr("The wait was given up. Choose the page again to ask the gateway once more.");
}

} // namespace

bool TransportUsrCtrl::Row::isTyped() const
{
    return edit && edit->text() != shown;
}

TransportUsrCtrl::TransportUsrCtrl(Client& client)
    : client_(client), ui_(std::make_unique<Ui::TransportUsrCtrl>()),
      TrDescription(new InstructionArea(QStringLiteral("TrDescription"), this))
{
    ui_->setupUi(this);
    TrDescription->setObjectName(QStringLiteral("scrDescription"));
    ui_->description->addWidget(TrDescription);
    setTabOrder(TrDescription, ui_->txtField0);
    ui_->LbltxtField0->hide();
    ui_->txtField0->hide();
    ui_->Image1->setBoxes(client_.desktop.boxes);
    say({});
    show(Look());
    ui_->cmdUndo->setEnabled(false);
    connect(ui_->cmdRegister, &QPushButton::clicked, this, &TransportUsrCtrl::cmdRegister_Click);
    connect(ui_->cmdremove, &QPushButton::clicked, this, &TransportUsrCtrl::cmdremove_Click);
    connect(ui_->cmdUndo, &QPushButton::clicked, this, &TransportUsrCtrl::cmdUndo_Click);
}

TransportUsrCtrl::~TransportUsrCtrl() = default;

void TransportUsrCtrl::AssembleObject(const QString& jid)
{
    ui_->LblTransportName->setText(longlines::shownLine(jid));
    say({});
    fetching_ = true;
    wait(tr("Fetching info ..."));
}

void TransportUsrCtrl::GetRegister(const QString& jid)
{
    if (send(GatewayForm::query(jid)))
        return;
    endWait(before_);
    TrDescription->setText({});
}

void TransportUsrCtrl::SetRegister(const QString& jid)
{
    QList<GatewayForm::Field> fields;
    for (const auto& row : rows_) {
        if (row.edit)
            fields.append({row.asked.name, row.isTyped() ? row.edit->text() : row.asked.value});
    }
    fetching_ = false;
    if (send(GatewayForm::submission(jid, fields, key_)))
        wait(tr("Waiting for a reply..."));
}

void TransportUsrCtrl::DeleteRegister(const QString& jid)
{
    fetching_ = false;
    if (send(GatewayForm::removal(jid, key_)))
        wait(tr("Waiting for a reply ..."));
}

void TransportUsrCtrl::cmdRegister_Click()
{
    SetRegister(jid_);
}

void TransportUsrCtrl::cmdremove_Click()
{
    DeleteRegister(jid_);
}

// What the gateway may still answer is shown when it comes.
void TransportUsrCtrl::cmdUndo_Click()
{
    endWait(before_);
    TrDescription->setText(givenUp());
}

void TransportUsrCtrl::sessionEnded()
{
    if (!waiting_)
        return;
    endWait(before_);
    TrDescription->setText(tr("The connection was lost before the gateway answered."));
}

void TransportUsrCtrl::subscribed()
{
    const auto* agent = client_.MyAgents.record(jid_);
    if (!waiting_ && agent && !agent->registered)
        askAgain();
}

void TransportUsrCtrl::OnIQ(PlugInContext& context)
{
    const auto fields = context.Stanza().IqFields();
    const QString id = fields.Id();
    if (fields.Type() == u"error")
        return refused(context);
    if (id == u"VRX_UNREGISTER")
        return removed();
    const auto form = GatewayForm::of(context.Stanza());
    // The form that follows tells what became of it.
    if (id == u"register-transport" && (!form || !form->registeredAt))
        return askAgain();
    if (form)
        return showForm(*form);
    endWait({});
    TrDescription->setText(tr("The gateway has sent no form."));
}

void TransportUsrCtrl::refused(const PlugInContext& context)
{
    endWait(!waiting_ ? look() : fetching_ ? Look() : before_);
    const QString reason = StanzaError::of(context.Stanza().root()).sentence();
    TrDescription->setText(tr("The Gateway could not be contacted, it could be not available.") + u'\n' +
                           longlines::shownLine(reason));
}

void TransportUsrCtrl::removed()
{
    endWait({});
    rows_.clear();
    if (auto* agent = client_.MyAgents.record(jid_))
        agent->registered = false;
    askAgain(tr("The Gateway has been removed."));
}

// The animation may need a box, under which the world goes on.
void TransportUsrCtrl::askAgain(const QString& news)
{
    const QPointer<TransportUsrCtrl> here(this);
    const SameSession same(client_);
    AssembleObject(jid_);
    if (!here || !same)
        return;
    GetRegister(jid_);
    if (!news.isEmpty())
        say(news);
}

void TransportUsrCtrl::showForm(const GatewayForm& form)
{
    const auto typing =
        std::ranges::find_if(rows_, [](const Row& row) { return row.edit && row.edit->hasFocus(); });
    const QString caret = typing == rows_.end() ? QString() : typing->asked.name;
    ui_->InfoTransport->hide(); // what is added below shows with it
    std::vector<Row> kept;
    if (!form.registeredAt)
        kept.swap(rows_);
    rows_.clear();
    key_ = form.key;
    for (qsizetype index = 0; index <= form.fields.size(); ++index) {
        if (form.registeredAt == index)
            addRegisteredLine();
        if (index < form.fields.size())
            AddRegistrationField(form.fields[index], kept);
    }
    auto* agent = client_.MyAgents.record(jid_);
    // The gateway knows better than what its presence let suppose.
    if (agent)
        agent->registered = form.registeredAt.has_value();
    const bool nothing = form.fields.isEmpty() && form.hasOtherForm;
    const bool registered = agent && agent->registered;
    endWait({!rows_.empty(), !registered && !nothing, registered});
    for (const auto& row : rows_) {
        if (row.edit && row.asked.name == caret)
            row.edit->setFocus();
    }
    TrDescription->setText(form.instructions);
    if (const QString word = wordAbout(form); !word.isEmpty())
        say(word);
}

QString TransportUsrCtrl::wordAbout(const GatewayForm& form) const
{
    if (form.fields.isEmpty() && form.hasOtherForm)
        return tr("The gateway's form is of a kind that can't be shown here.");
    if (form.asked > form.fields.size())
        return tr("The gateway asks for %1 fields. The first %2 are shown.")
            .arg(form.asked)
            .arg(form.fields.size());
    const bool whole = std::ranges::all_of(form.fields, &GatewayForm::Field::canBeSent);
    return whole ? QString() : tr("A field's name can't be sent back, so that the field is left out.");
}

void TransportUsrCtrl::AddRegistrationField(const GatewayForm::Field& field, std::vector<Row>& kept)
{
    auto* label = addLabel(caption(field.name));
    const auto index = rows_.size();
    auto* edit = new QLineEdit(longlines::shownLine(field.value), ui_->InfoTransport);
    edit->setObjectName(QStringLiteral("txtField%1").arg(index));
    edit->setCursorPosition(0);
    if (field.isSecret())
        edit->setEchoMode(QLineEdit::Password);
    label->setBuddy(edit);
    ui_->fields->addWidget(edit, int(index), 1);
    const auto last =
        std::ranges::find_if(rows_.rbegin(), rows_.rend(), [](auto& row) { return !!row.edit; });
    setTabOrder(last == rows_.rend() ? ui_->txtField0 : last->edit.get(), edit);
    rows_.back().asked = field;
    rows_.back().shown = edit->text();
    rows_.back().edit.reset(edit);
    const auto before = std::ranges::find_if(
        kept, [&field](const Row& row) { return row.edit && row.asked.name == field.name; });
    if (before == kept.end())
        return;
    if (before->isTyped())
        edit->setText(before->edit->text());
    kept.erase(before);
}

void TransportUsrCtrl::addRegisteredLine()
{
    auto* label = addLabel(tr("Gateway is already registered !"));
    QPalette colours;
    colours.setColor(QPalette::WindowText, registeredColour);
    label->setPalette(colours);
    ui_->fields->addWidget(label, int(rows_.size()), 0, 1, 2);
}

// The label of a new row, the last.
QLabel* TransportUsrCtrl::addLabel(const QString& text)
{
    auto* label = new QLabel(ui_->InfoTransport);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    rows_.push_back({{}, std::unique_ptr<QLabel>(label), nullptr, {}});
    label->setObjectName(QStringLiteral("LbltxtField%1").arg(rows_.size()));
    ui_->fields->addWidget(label, int(rows_.size()), 0);
    return label;
}

bool TransportUsrCtrl::send(const QString& request)
{
    const bool connected = client_.isConnected();
    if (connected && stanzas::send(client_, request)) {
        say({});
        return true;
    }
    say(connected ? tr("The request could not be sent.") : tr("You are not connected."));
    return false;
}

void TransportUsrCtrl::wait(const QString& status)
{
    if (!waiting_)
        before_ = look();
    waiting_ = true;
    const auto* focused = window()->focusWidget();
    ui_->cmdUndo->setEnabled(true);
    if (focused && isAncestorOf(focused))
        ui_->cmdUndo->setFocus();
    show(Look());
    TrDescription->setText(status);
    StartGatewayAnimation(animation());
}

void TransportUsrCtrl::StartGatewayAnimation(const QString& path)
{
    ui_->Image1->Start(path);
}

void TransportUsrCtrl::StopGatewayAnimation()
{
    ui_->Image1->Stop();
}

void TransportUsrCtrl::endWait(const Look& look)
{
    const bool focused = ui_->cmdUndo->hasFocus();
    waiting_ = false;
    StopGatewayAnimation();
    show(look);
    const auto first = std::ranges::find_if(rows_, [](const Row& row) { return row.edit != nullptr; });
    // Never to "Remove", where one more Enter would do harm.
    if (focused && look.form && first != rows_.end())
        first->edit->setFocus();
    else if (focused && look.subscribe)
        ui_->cmdRegister->setFocus();
    ui_->cmdUndo->setEnabled(false);
}

TransportUsrCtrl::Look TransportUsrCtrl::look() const
{
    return {!ui_->InfoTransport->isHidden(), ui_->cmdRegister->isEnabled(), ui_->cmdremove->isEnabled()};
}

void TransportUsrCtrl::show(const Look& look)
{
    ui_->InfoTransport->setVisible(look.form);
    ui_->cmdRegister->setEnabled(look.subscribe);
    ui_->cmdremove->setEnabled(look.remove);
}

void TransportUsrCtrl::say(const QString& word)
{
    ui_->lblState->setText(word);
    ui_->lblState->setVisible(!word.isEmpty());
}

void TransportUsrCtrl::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && qobject_cast<QLineEdit*>(window()->focusWidget()))
        ui_->cmdRegister->click(); // nothing where it is off
    else if (event->key() == Qt::Key_Escape && waiting_)
        cmdUndo_Click();
    else
        QWidget::keyPressEvent(event);
}
