#include "groupchat/forms/GroupchatWindowForm.h"

#include "contacts/Client.h"
#include "contacts/RosterStanzas.h"
#include "desktop/forms/ImageList.h"
#include "desktop/forms/StatusPanel.h"
#include "engine/Jid.h"
#include "engine/StanzaError.h"
#include "groupchat/RoomStanzas.h"
#include "groupchat/RoomStatus.h"
#include "messaging/LongLines.h"
#include "messaging/OutboundMessage.h"
#include "messaging/forms/ConversationHost.h"
#include "messaging/forms/EditCommands.h"
#include "ui_GroupchatWindowForm.h"

namespace
{

using Style = TranscriptRun::Style;

constexpr QSize smallest(7680 / 15, 6480 / 15); // twips
constexpr int treeWidth = 2655 / 15;

} // namespace

GroupchatWindowForm::GroupchatWindowForm(FormRegistry& registry, ConversationHost& host)
    : RoomWindow(registry, QStringLiteral("GroupchatWindowForm")),
      ui_(std::make_unique<Ui::GroupchatWindowForm>()), host_(host)
{
    ui_->setupUi(this);
    setMinimumSize(smallest);
    panel_ = new StatusPanel(ui_->StatusBar1, QStringLiteral("StatusBar1Panel1"));
    ui_->Toolbar1Invite->setIcon(ImageList::icon(QStringLiteral("rsvp")));
    ui_->Toolbar1Return->setIcon(ImageList::icon(QStringLiteral("disenret")));
    ui_->Status->addItems(roomstatus::labels());
    ui_->Status->setCurrentIndex(-1); // none before the entry
    setUpHistory();
    setUpEntry();
    setUpOccupants();
    connectMenus();
    setEntry(ui_->RichTextBox2);
}

GroupchatWindowForm::~GroupchatWindowForm() = default;

Client& GroupchatWindowForm::client() const
{
    return host_.client();
}

void GroupchatWindowForm::setUpHistory()
{
    auto* edit = ui_->mnucontattimodify;
    new EditCommands(edit,
                     {nullptr, ui_->mnucontattimodifycut, ui_->mnucontattimodifycopy,
                      ui_->mnucontattimodifypaste, ui_->mnucontattimodifydel,
                      ui_->mnucontattimodifyselectall},
                     this);
    ui_->vbalRichEdit1->moreText = tr(" [... and %1 more characters]");
    connect(ui_->vbalRichEdit1, &TranscriptView::menuRequested, edit, [edit](const QPoint& at, bool shift) {
        if (!shift)
            edit->popup(at);
    });
    connect(ui_->vbalRichEdit1, &TranscriptView::typed, this, [this](const QString& text) {
        ui_->RichTextBox2->insertMessage(text);
        ui_->RichTextBox2->setFocus();
    });
    connect(ui_->vbalRichEdit1, &TranscriptView::linkPressed, this, [this](const QString& target) {
        client().desktop.links->open(target);
        ui_->RichTextBox2->setFocus();
    });
}

void GroupchatWindowForm::setUpEntry()
{
    auto* entry = ui_->RichTextBox2;
    entry->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(entry, &QWidget::customContextMenuRequested, this,
            [this, entry](const QPoint& at) { ui_->mnucontattimodify->popup(entry->mapToGlobal(at)); });
    connect(entry, &MessageEdit::sendRequested, this, &GroupchatWindowForm::sendLine);
    connect(ui_->Command2, &QPushButton::clicked, this, &GroupchatWindowForm::Command2_Click);
    connect(ui_->Command3, &QPushButton::clicked, this, &QWidget::close);
    connect(ui_->Command1, &QPushButton::clicked, this, &GroupchatWindowForm::Command1_Click);
    connect(ui_->Text1, &QLineEdit::returnPressed, this, &GroupchatWindowForm::Command1_Click);
    connect(ui_->Status, &QComboBox::activated, this, &GroupchatWindowForm::Status_Click);
}

void GroupchatWindowForm::setUpOccupants()
{
    ui_->TreeView1->setOccupants(occupants);
    ui_->columns->setSizes({width() - treeWidth, treeWidth});
    ui_->columns->setStretchFactor(0, 1);
    ui_->texts->setSizes({300, 100});
    ui_->texts->setStretchFactor(0, 3);
    ui_->texts->setStretchFactor(1, 1);
    connect(ui_->TreeView1, &OccupantsView::menuRequested, this,
            [this](const QPoint& at) { ui_->mnugroupopt->popup(at); });
    connect(ui_->TreeView1, &OccupantsView::opened, this, &GroupchatWindowForm::mnucontattichat_Click);
}

void GroupchatWindowForm::connectMenus()
{
    connect(ui_->mnucontatticlose, &QAction::triggered, this, &QWidget::close);
    connect(ui_->mnugroupcr, &QAction::toggled, this, &GroupchatWindowForm::mnugroupcr_Click);
    connect(ui_->Toolbar1Return, &QAction::toggled, ui_->mnugroupcr, &QAction::setChecked);
    connect(ui_->mnucontattichnick, &QAction::triggered, this, &GroupchatWindowForm::mnucontattichnick_Click);
    connect(ui_->mnucontattichat, &QAction::triggered, this, &GroupchatWindowForm::mnucontattichat_Click);
    for (auto* action : {ui_->mnucontattiinvite, ui_->Toolbar1Invite})
        connect(action, &QAction::triggered, this, [this] { emit inviteRequested(Tag); });
}

QString GroupchatWindowForm::ownNick() const
{
    return occupants.NodeTextByKey(ownId_);
}

void GroupchatWindowForm::rename(int position, const QString& nick)
{
    const auto& occupant = *occupants.node(position);
    const QString former = occupant.Text;
    occupants.setText(position, nick);
    if (occupant.Key == ownId_ && occupant.Text != former)
        tell(tr("You are in the room as %1.").arg(occupant.Text));
}

void GroupchatWindowForm::setOwnEntry(const QString& id, const QString& nick)
{
    ownId_ = id;
    refused_ = false;
    ui_->RemJID->setText(nick);
    occupants.add(id, nick);
    setOwnStatus(0);
    tell(tr("You are in the room as %1.").arg(ownNick()));
}

void GroupchatWindowForm::setOwnStatus(int position)
{
    ui_->Status->setCurrentIndex(position);
}

void GroupchatWindowForm::setSubject(const QString& text)
{
    ui_->Text1->setText(text);
    ui_->Text1->setCursorPosition(0);
}

QString GroupchatWindowForm::nickOf(const QString& occupant) const
{
    return occupants.NodeTextByKey(occupant);
}

void GroupchatWindowForm::refuse(const StanzaError& error)
{
    refused_ = ownId_.isEmpty();
    const QString sentence = error.sentence();
    if (error.code == 409)
        tell(tr("This nick is taken (%1). Please choose another: Options, Change Nick.").arg(sentence));
    else if (error.code == 406)
        tell(tr("The room doesn't take this nick (%1). Please choose another: Options, Change Nick.")
                 .arg(sentence));
    else
        tell(tr("The room refused: %1").arg(sentence));
}

void GroupchatWindowForm::tell(const QString& text)
{
    panel_->tell(text);
}

void GroupchatWindowForm::writeStatus(const QString& text, const QDateTime& written)
{
    ui_->vbalRichEdit1->appendLine(
        {{Style::RoomStamp, QStringLiteral(" <") + host_.stamps().shortTime(written) + QStringLiteral("> ")},
         {Style::RoomStatus, text}});
    ui_->vbalRichEdit1->scrollToEnd();
}

// What follows a line break must not look like what somebody else does.
void GroupchatWindowForm::writeAction(const QString& text)
{
    ui_->vbalRichEdit1->appendLine(
        {{Style::RoomAction, QStringLiteral("*** ") + longlines::indented(text) + u' '}});
    ui_->vbalRichEdit1->scrollToEnd();
}

void GroupchatWindowForm::writeMessage(const QString& nick, const QString& body, const QDateTime& written)
{
    ui_->vbalRichEdit1->appendLine(
        {{Style::RoomStamp, QStringLiteral(" <") + host_.stamps().shortTime(written) + QStringLiteral("> ")},
         {Style::RoomNick, u' ' + nick + QStringLiteral(": ")},
         {Style::Plain, body}});
}

void GroupchatWindowForm::writeReturned(const QString& body, bool uncertain)
{
    ui_->vbalRichEdit1->appendLine(
        {{Style::NoticeSender, uncertain ? tr("This message may not have arrived: ") : tr("Not sent: ")},
         {Style::Plain, body}});
}

QString GroupchatWindowForm::draft() const
{
    return ui_->RichTextBox2->messageText();
}

void GroupchatWindowForm::setDraft(const QString& text)
{
    ui_->RichTextBox2->insertMessage(text);
}

// The first line goes; what follows waits for the next Enter.
void GroupchatWindowForm::sendLine()
{
    if (!ui_->RichTextBox2->enterSends)
        return Command2_Click();
    const QString text = draft();
    const auto end = text.indexOf(u'\n');
    const QString line = end < 0 ? text : text.left(end);
    const QPointer<GroupchatWindowForm> self(this);
    if ((!line.isEmpty() && !say(line)) || !self)
        return;
    ui_->RichTextBox2->clear();
    if (end >= 0)
        setDraft(text.mid(end + 1));
    ui_->vbalRichEdit1->scrollToEnd();
}

void GroupchatWindowForm::Command2_Click()
{
    const QString text = draft();
    const QPointer<GroupchatWindowForm> self(this);
    if (text.isEmpty() || !say(text) || !self)
        return;
    ui_->RichTextBox2->clear();
    ui_->RichTextBox2->setFocus();
    ui_->vbalRichEdit1->scrollToEnd();
}

// Nothing is shown before the room has sent it back. What one says outside would be lost.
bool GroupchatWindowForm::say(const QString& text)
{
    if (refused_) {
        tell(tr("You are not in the room. Nothing was sent. Options, Change Nick tries again."));
        return false;
    }
    newMessage().setBody(outbound::sendable(text));
    return sendPacket();
}

MessageFields GroupchatWindowForm::newMessage() const
{
    auto& packet = client().Application->OutPacket();
    packet.Clear();
    auto fields = packet.MessageFields();
    fields.setTo(Tag);
    fields.setType(QStringLiteral("GroupChat"));
    return fields;
}

PresenceFields GroupchatWindowForm::newPresence(const QString& to) const
{
    auto& packet = client().Application->OutPacket();
    packet.Clear();
    auto fields = packet.PresenceFields();
    fields.setTo(to);
    return fields;
}

bool GroupchatWindowForm::sendPacket()
{
    auto& packet = client().Application->OutPacket();
    // A box or a menu of the window may outlast it; what it sends then would enter the room anew.
    if (!registry().isLoaded(this))
        return false;
    if (!client().isConnected())
        tell(tr("You are not connected. Nothing was sent."));
    else if (!packet.Send())
        tell(tr("Nothing was sent: %1").arg(packet.lastError()));
    else
        return true;
    return false;
}

void GroupchatWindowForm::Command1_Click()
{
    const QString subject = outbound::sendable(ui_->Text1->text());
    auto fields = newMessage();
    fields.setSubject(subject);
    fields.setBody(QStringLiteral("/me has changed the subject to ") + subject);
    sendPacket();
}

void GroupchatWindowForm::mnugroupcr_Click()
{
    const bool newLine = ui_->mnugroupcr->isChecked();
    ui_->RichTextBox2->enterSends = !newLine;
    ui_->Toolbar1Return->setChecked(newLine);
}

// Kept: an answer is sent whatever it is, also none. Who isn't in the room yet, because the nick was taken,
// tries the entry with the new one. A room that went under the box is not entered again.
void GroupchatWindowForm::mnucontattichnick_Click()
{
    const QPointer<GroupchatWindowForm> self(this);
    const QString nick =
        outbound::sendable(client()
                               .desktop.boxes->input(tr("Adding new Nick"), tr("Please add a Nick..."), {})
                               .value_or(QString()));
    if (!self || !isKept())
        return;
    newPresence(Tag + u'/' + nick);
    if (sendPacket() && ownId_.isEmpty() && !nick.isEmpty())
        stanzas::send(client(), roomstanzas::nick(Tag, nick));
}

void GroupchatWindowForm::mnucontattichat_Click()
{
    const QString occupant = ui_->TreeView1->selectedKey();
    if (!occupant.isEmpty())
        emit privateChatRequested(occupant);
}

void GroupchatWindowForm::Status_Click()
{
    const auto* own = occupants.node(qMax(1, occupants.NodeIndexByKey(ownId_)));
    const auto word = roomstatus::announcedBy(ui_->Status->currentText(), own ? own->Image : QString());
    if (!word || ownId_.isEmpty())
        return;
    auto fields = newPresence(jid::bare(ownId_));
    fields.setFrom(ownId_);
    fields.setShow(*word);
    fields.setStatus(*word);
    sendPacket();
}

bool GroupchatWindowForm::hasLeftFor(int milliseconds) const
{
    return left_.isValid() && left_.msecsTo(client().desktop.clock->now()) >= milliseconds;
}

// A room that never let the person in has nothing to confirm.
bool GroupchatWindowForm::queryUnload(CloseMode)
{
    if (!client().isConnected())
        return true;
    newPresence(Tag).SetUnavailable();
    client().Application->OutPacket().Send();
    if (client().SessionClosing || std::exchange(client().GroupchatCloseConfirmed, false) ||
        ownId_.isEmpty() || client().UserClosing)
        return true;
    left_ = client().desktop.clock->now();
    hide();
    emit left();
    return false;
}

void GroupchatWindowForm::unload()
{
    emit leaving();
    RoomWindow::unload();
}
