#include "messaging/forms/MessageForm.h"

#include "contacts/Client.h"
#include "contacts/RosterStanzas.h"
#include "desktop/SafeLink.h"
#include "desktop/forms/Form.h"
#include "desktop/forms/ImageList.h"
#include "desktop/forms/StatusPanel.h"
#include "engine/Jid.h"
#include "messaging/WindowTag.h"
#include "messaging/forms/ConversationHost.h"
#include "messaging/forms/EditCommands.h"
#include "messaging/forms/LogMessageForm.h"
#include "messaging/forms/PutAway.h"
#include "messaging/forms/ReturnedMessages.h"
#include "ui_MessageForm.h"

#include <QRegularExpression>
#include <QUrl>

namespace
{

// What the window system is spared of hostile names; characters.
constexpr qsizetype longestLabel = 1000;
constexpr int pictureSize = 16;     // logical pixels
constexpr QSize smallest(467, 414); // 7000 by 6200 twips

QString escapedForLink(const QString& text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text, "@"));
}

} // namespace

MessageForm::MessageForm(FormRegistry& registry, ConversationHost& hub)
    : ConversationForm(registry, QStringLiteral("MessageForm")), ui_(std::make_unique<Ui::MessageForm>()),
      hub_(hub), commands_(hub.client())
{
    ui_->setupUi(this);
    setMinimumSize(smallest);
    panel_ = new StatusPanel(ui_->StatusBar1, QStringLiteral("StatusBar1Panel1"));
    resources_ = std::make_unique<ResourceControls>(*ui_->ComboResource, *ui_->txtTOR, *ui_->lblResource);
    returned_ = new ReturnedMessages(this, [this](const QString& body) { return send(body); });
    ui_->rows->insertWidget(ui_->rows->indexOf(ui_->txtMsg), returned_);
    setUpToolbar();
    setUpEditing();
    connectMenus();
    typingEnd_.setSingleShot(true);
    typingEnd_.setParent(this);
    typingEnd_.setObjectName(QStringLiteral("typingEnd"));
    connect(&typingEnd_, &QTimer::timeout, this, &MessageForm::endTyping);
    setDefaultButton(ui_->cmdSend);
    setCancelButton(ui_->cmdCancel);
    setEntry(ui_->txtMsg);
}

MessageForm::~MessageForm() = default;

Client& MessageForm::client() const
{
    return hub_.client();
}

void MessageForm::setUpToolbar()
{
    const std::pair<QAction*, const char*> pictures[] = {
        {ui_->Toolbar1Block, "block"}, {ui_->Toolbar1Add, "Add"},     {ui_->Toolbar1History, "historyG"},
        {ui_->Toolbar1Call, "voice"},  {ui_->Toolbar1Invite, "rsvp"}, {ui_->Toolbar1Return, "disenret"},
        {ui_->Toolbar1VCard, "vcard"},
    };
    for (const auto& [button, key] : pictures)
        button->setIcon(ImageList::icon(QString::fromLatin1(key)));
    refreshCommands();
    ui_->Toolbar1Return->setChecked(ui_->mnuToolsNoChar13->isChecked());
    connect(ui_->Toolbar1Block, &QAction::triggered, this, [this, &hub = hub_] {
        const SameSession same(client());
        mnustrblock_Click(); // its box may outlive the window
        if (same)
            emit hub.rosterRefreshRequested();
    });
    connect(ui_->Toolbar1Add, &QAction::triggered, this, &MessageForm::mnuToolsAdd_Click);
    connect(ui_->Toolbar1History, &QAction::triggered, this, &MessageForm::mnustroldconv_Click);
    connect(ui_->Toolbar1Call, &QAction::triggered, this, &MessageForm::mnustrsendfile_Click);
    connect(ui_->Toolbar1Invite, &QAction::triggered, this, &MessageForm::mnustrincchgr_Click);
    connect(ui_->Toolbar1Return, &QAction::toggled, ui_->mnuToolsNoChar13, &QAction::setChecked);
    connect(ui_->Toolbar1VCard, &QAction::triggered, this, &MessageForm::mnustrvcard_Click);
}

void MessageForm::setUpEditing()
{
    new EditCommands(ui_->mnuEdit,
                     {ui_->mnuEditUndo, ui_->mnuEditCut, ui_->mnuEditCopy, ui_->mnuEditPaste, ui_->mnuEditDel,
                      ui_->mnuEditSelAll},
                     this);
    ui_->txtLog->moreText = tr(" [... and %1 more characters, which stand in the message log]");
    connect(ui_->txtLog, &TranscriptView::menuRequested, ui_->mnuEdit, [this](const QPoint& at, bool shift) {
        if (!shift)
            ui_->mnuEdit->popup(at);
    });
    connect(ui_->txtLog, &TranscriptView::typed, this, [this](const QString& text) {
        ui_->txtMsg->insertMessage(text);
        ui_->txtMsg->setFocus();
    });
    connect(ui_->txtLog, &TranscriptView::linkPressed, this, [this](const QString& target) {
        client().desktop.links->open(target);
        ui_->txtMsg->setFocus();
    });
    connect(ui_->txtMsg, &MessageEdit::textChanged, this, &MessageForm::txtMsg_Change);
    connect(ui_->txtMsg, &MessageEdit::sendRequested, this, &MessageForm::cmdSend_Click);
    connect(ui_->cmdSend, &QPushButton::clicked, this, &MessageForm::cmdSend_Click);
    connect(ui_->cmdCancel, &QPushButton::clicked, this, &QWidget::close);
}

void MessageForm::connectMenus()
{
    connect(ui_->mnuFileClose, &QAction::triggered, this, &QWidget::close);
    connect(ui_->mnuTools, &QMenu::aboutToShow, this, &MessageForm::refreshCommands);
    connect(ui_->mnuToolsNoChar13, &QAction::toggled, this, &MessageForm::mnuToolsNoChar13_Click);
    connect(ui_->mnuToolsAdd, &QAction::triggered, this, &MessageForm::mnuToolsAdd_Click);
    connect(ui_->mnustroldconv, &QAction::triggered, this, &MessageForm::mnustroldconv_Click);
    connect(ui_->mnustrsendfile, &QAction::triggered, this, &MessageForm::mnustrsendfile_Click);
    connect(ui_->mnustrblock, &QAction::triggered, this, &MessageForm::mnustrblock_Click);
    connect(ui_->mnustrvcard, &QAction::triggered, this, &MessageForm::mnustrvcard_Click);
    connect(ui_->mnustrincchgr, &QAction::triggered, this, &MessageForm::mnustrincchgr_Click);
    connect(ui_->mnustrDelHistory, &QAction::triggered, this, &MessageForm::mnustrDelHistory_Click);
}

void MessageForm::WriteMessage(const MessageFields& fields, const QString& body)
{
    const bool own = OwnMessage && !hub_.IsTrick;
    const QString from = fields.From();
    const QDateTime written = fields.Written();
    OwnMessage = false;
    ui_->txtLog->appendLine({{TranscriptRun::Style::Stamp,
                              QStringLiteral(" <") + hub_.stamps().shortTime(written) + QStringLiteral("> ")},
                             {own ? TranscriptRun::Style::OwnName : TranscriptRun::Style::PeerName,
                              u' ' + from + QStringLiteral(": ")},
                             {TranscriptRun::Style::Body, body}});
    if (!own)
        return;
    ui_->txtLog->scrollToEnd();
    hub_.reportLog(hub_.log().WriteLogLine(body, jid::bare(from), fields.To(), true));
}

void MessageForm::cmdSend_Click()
{
    const QString text = ui_->txtMsg->messageText();
    if (text.isEmpty())
        return;
    if (ui_->txtTO->text().isEmpty())
        return setPanelText(tr("Nothing was sent: you take no messages from people outside your list."));
    const QPointer<MessageForm> self(this);
    if (!send(text) || !self)
        return;
    ui_->txtMsg->clear();
    ui_->txtMsg->setFocus();
    typing_.messageSent();
}

bool MessageForm::send(const QString& text)
{
    if (!Context)
        return false;
    if (!client().isConnected()) {
        setPanelText(tr("You are not connected. Your message was not sent."));
        return false;
    }
    const PlugInContext context = *Context;
    auto fields = context.OutPacket().MessageFields();
    fields.setTo(target());
    fields.setBody(outbound::sendable(text));
    fields.setType(QStringLiteral("chat"));
    if (!context.OutPacket().Send()) {
        setPanelText(tr("Your message was not sent: %1").arg(context.OutPacket().lastError()));
        return false;
    }
    OwnMessage = true;
    WriteMessage(fields, fields.Body());
    return true;
}

void MessageForm::showReturned(const QString& body, bool uncertain)
{
    ui_->txtLog->appendLine({{TranscriptRun::Style::NoticeSender,
                              uncertain ? tr("This message may not have arrived: ") : tr("Not sent: ")},
                             {TranscriptRun::Style::Plain, body}});
    returned_->add(body);
}

// A text that goes is no typing: it may have been written without a connection. A window without a peer has
// nobody to tell.
void MessageForm::txtMsg_Change()
{
    const bool typed = !ui_->txtMsg->document()->isEmpty() && !ui_->txtTO->text().isEmpty();
    if (typed && client().isConnected() && typing_.textChanged())
        stanzas::send(client(), outbound::composing(peerJid()));
}

void MessageForm::mnuToolsNoChar13_Click()
{
    const bool newLine = ui_->mnuToolsNoChar13->isChecked();
    setDefaultButton(newLine ? nullptr : ui_->cmdSend);
    ui_->txtMsg->enterSends = !newLine;
    ui_->Toolbar1Return->setChecked(newLine);
}

void MessageForm::mnuToolsAdd_Click()
{
    if (!tellUnlessConnected())
        return;
    const QPointer<MessageForm> self(this);
    if (commands_.addContact(peerJid()) && self)
        setCanAdd(false);
}

void MessageForm::mnustrblock_Click()
{
    auto& hub = hub_;
    const SameSession same(client());
    if (commands_.block(peer) && same)
        emit hub.rosterRefreshRequested();
}

void MessageForm::mnustroldconv_Click()
{
    hub_.ShowMessageLog(peerJid());
}

void MessageForm::mnustrDelHistory_Click()
{
    const QString error = hub_.log().ClearMessageLog(peerJid());
    if (!error.isEmpty())
        client().desktop.boxes->exclamation(tr("Message Log"), error);
}

void MessageForm::mnustrvcard_Click()
{
    if (!tellUnlessConnected())
        return;
    emit hub_.vCardRequested(peerJid());
    commands_.requestVCard(peerJid());
}

void MessageForm::mnustrincchgr_Click()
{
    if (tellUnlessConnected())
        emit hub_.inviteRequested(peerJid());
}

void MessageForm::mnustrsendfile_Click()
{
    if (tellUnlessConnected())
        emit hub_.callRequested(this);
}

void MessageForm::sendByEmail()
{
    const QPointer<MessageForm> self(this);
    const auto address = client().desktop.boxes->input(tr("Brelo Instant Messenger"),
                                                       tr("Type the e-mail address of the receiver:"), {});
    if (!self || !address || address->isEmpty())
        return;
    const QString begin = QStringLiteral("mailto:") + escapedForLink(*address) + QStringLiteral("?body=");
    const QString end = QStringLiteral("&subject=") +
                        escapedForLink(QStringLiteral("Jabber conversation with ") + ui_->txtTO->text());
    // A link is bounded: what was said last goes along.
    QString body = escapedForLink(ui_->txtLog->transcriptText().right(longestLink));
    const auto room = longestLink - begin.size() - end.size();
    if (body.size() > room)
        body = body.mid(body.indexOf(QRegularExpression(QStringLiteral("%20|%0A")), body.size() - room));
    client().desktop.links->open(begin + body.right(qMax<qsizetype>(0, room)) + end);
}

// The transcript has 55 per cent of what the told rows and gaps leave, the entry the rest without its own
// gaps.
void MessageForm::resizeEvent(QResizeEvent* event)
{
    const int left = height() - ui_->Toolbar1->height() - ui_->txtTO->height() - ui_->txtTOS->height() -
                     ui_->StatusBar1->height() - 400 / windowtag::twipsPerPixel;
    const int log = left * 55 / 100;
    ui_->rows->setStretchFactor(ui_->txtLog, log);
    ui_->rows->setStretchFactor(ui_->txtMsg,
                                qMax(1, left - log - (200 + 150 + 400) / windowtag::twipsPerPixel));
    ConversationForm::resizeEvent(event);
}

bool MessageForm::queryUnload(CloseMode)
{
    if (!client().isConnected())
        endTyping();
    // A window that no bag keeps could never be brought back.
    if (client().UserClosing || !isKept())
        return true;
    putAway(*this);
    return false;
}

void MessageForm::setPeer(const QString& jid)
{
    ui_->txtTO->setText(jid);
    ui_->txtTO->setCursorPosition(0);
    setSender(jid);
}

void MessageForm::setSender(const QString& jid)
{
    ui_->toJIDmsg->setText(jid);
}

void MessageForm::setNick(const QString& nick)
{
    ui_->txtNick->setText(nick.left(longestLabel));
    ui_->txtNick->setCursorPosition(0);
}

void MessageForm::setStatusText(const QString& text)
{
    ui_->txtTOS->setText(text.left(longestLabel));
    ui_->txtTOS->setCursorPosition(0);
}

void MessageForm::setPicture(const QString& imageKey)
{
    if (picture_ == imageKey)
        return;
    picture_ = imageKey;
    ui_->imgStatus->setPixmap(ImageList::icon(imageKey).pixmap(pictureSize));
    ui_->imgStatus->setAccessibleDescription(imageKey);
}

void MessageForm::setCanAdd(bool on)
{
    canAdd_ = on;
    refreshCommands();
}

void MessageForm::refreshCommands()
{
    const bool connected = client().isConnected();
    for (auto* action : {ui_->mnuToolsAdd, ui_->Toolbar1Add})
        action->setEnabled(connected && canAdd_);
    for (auto* action : {ui_->mnustrvcard, ui_->Toolbar1VCard, ui_->mnustrincchgr, ui_->Toolbar1Invite,
                         ui_->mnustrsendfile, ui_->Toolbar1Call})
        action->setEnabled(connected);
}

bool MessageForm::tellUnlessConnected()
{
    refreshCommands();
    if (!client().isConnected())
        setPanelText(tr("You are not connected. Nothing was sent."));
    return client().isConnected();
}

bool MessageForm::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::Show)
        refreshCommands();
    return ConversationForm::event(event);
}

void MessageForm::showTyping(const QString& from)
{
    const QString before = typingEnd_.isActive() ? beforeTyping_ : panelText_;
    setPanelText(tr("%1 is typing a message ...").arg(from));
    beforeTyping_ = before;
    typingEnd_.start(60000);
}

void MessageForm::endTyping()
{
    if (!beforeTyping_.isNull())
        setPanelText(QString(beforeTyping_));
}

void MessageForm::setPanelText(const QString& text)
{
    typingEnd_.stop();
    beforeTyping_ = QString();
    panelText_ = text.left(longestLabel) + QLatin1String("");
    panel_->tell(panelText_);
}
void MessageForm::focusEntry()
{
    ui_->txtMsg->setFocus();
}
QString MessageForm::peerJid() const
{
    return ui_->toJIDmsg->text();
}
QString MessageForm::target() const
{
    return outbound::address(peerJid(), resources_->chosen());
}
