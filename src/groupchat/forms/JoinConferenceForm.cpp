#include "groupchat/forms/JoinConferenceForm.h"

#include "contacts/Client.h"
#include "contacts/RosterStanzas.h"
#include "groupchat/RoomStanzas.h"
#include "messaging/OutboundMessage.h"
#include "messaging/WindowTag.h"
#include "ui_JoinConferenceForm.h"

#include <QApplication>
#include <QLineEdit>

namespace
{

constexpr int usualHeight = 4224 / windowtag::twipsPerPixel;
constexpr int invitedHeight = 5400 / windowtag::twipsPerPixel;
constexpr int smallScreen = 500;              // pixels high
constexpr qsizetype longestInvitation = 1000; // characters that are shown
constexpr int mostServers = 20;               // that are remembered

QString behindAt(const QString& jid)
{
    return jid.mid(jid.indexOf(u'@') + 1);
}

} // namespace

JoinConferenceForm::JoinConferenceForm(FormRegistry& registry, Client& client)
    : Form(registry, QStringLiteral("JoinConferenceForm")), ui_(std::make_unique<Ui::JoinConferenceForm>()),
      client_(client)
{
    ui_->setupUi(this);
    // An invitation must not take the keys that the person types elsewhere.
    setAttribute(Qt::WA_ShowWithoutActivating);
    ui_->BrowseUsrCtrl1->setClient(client_);
    ui_->BrowseUsrCtrl1->MyType = QStringLiteral("CHATROOM");
    ui_->txtServerName->setCurrentText(client_.Gateway().Server());
    ui_->txtNick->setText(client_.Gateway().UserName());
    ui_->lblfromJID->setTextFormat(Qt::PlainText);
    for (auto* widget : {ui_->invitationText->viewport(), static_cast<QWidget*>(ui_->lblfromJID)})
        widget->setAutoFillBackground(false); // the frame's shade goes through
    setDefaultButton(ui_->cmdJoin);
    setCancelButton(ui_->cmdClose);
    setEntry(ui_->BrowseUsrCtrl1);
    connect(ui_->Command1, &QPushButton::clicked, this, &JoinConferenceForm::Command1_Click);
    connect(ui_->cmdJoin, &QPushButton::clicked, this, &JoinConferenceForm::cmdJoin_Click);
    connect(ui_->cmdClose, &QPushButton::clicked, this, &QWidget::close);
    connect(ui_->Check1, &QCheckBox::toggled, this, &JoinConferenceForm::Check1_Click);
    connect(ui_->OptPublic, &QRadioButton::toggled, this,
            [this](bool on) { ui_->BrowseUsrCtrl1->publicRooms = on; });
    for (auto* kind : {ui_->OptPublic, ui_->Option1})
        connect(kind, &QRadioButton::clicked, ui_->BrowseUsrCtrl1, &BrowseUsrCtrl::forgetOtherKind);
    connect(ui_->BrowseUsrCtrl1, &BrowseUsrCtrl::chosen, this, &JoinConferenceForm::offerJoin);
    connect(ui_->BrowseUsrCtrl1, &BrowseUsrCtrl::opened, this, &JoinConferenceForm::cmdJoin_Click);
    connect(ui_->BrowseUsrCtrl1, &BrowseUsrCtrl::roomServiceFound, this, [this](const QString& jid) {
        if (!invited_) // whose room lies where the invitation says
            roomService_ = jid;
    });
    ResetJoinDialog();
    Command1_Click();
}

JoinConferenceForm::~JoinConferenceForm() = default;

ApplicationPlugIn& JoinConferenceForm::browser() const
{
    return *ui_->BrowseUsrCtrl1;
}

QString JoinConferenceForm::nick() const
{
    return outbound::sendable(ui_->txtNick->text());
}

void JoinConferenceForm::Command1_Click()
{
    ui_->BrowseUsrCtrl1->setHint(tr("Looking for rooms ..."));
    if (!stanzas::send(client_, roomstanzas::roomServices(ui_->txtServerName->currentText())))
        ui_->BrowseUsrCtrl1->setHint(tr("You are not connected."));
}

void JoinConferenceForm::Check1_Click()
{
    const bool isNew = ui_->Check1->isChecked();
    for (QWidget* widget : {static_cast<QWidget*>(ui_->lblRoomName), static_cast<QWidget*>(ui_->txtRoomName),
                            static_cast<QWidget*>(ui_->cmdJoin)})
        widget->setEnabled(isNew);
    ui_->BrowseUsrCtrl1->setVisible(!isNew);
    if (isNew)
        ui_->txtRoomName->setFocus();
}

// A row that is chosen counts only while the rows are there.
void JoinConferenceForm::offerJoin(bool on)
{
    if (!ui_->BrowseUsrCtrl1->isHidden())
        ui_->cmdJoin->setEnabled(on);
}

QString JoinConferenceForm::roomJid() const
{
    if (ui_->Check1->isChecked() || ui_->BrowseUsrCtrl1->isHidden())
        return ui_->txtRoomName->text() + u'@' + roomService_;
    return ui_->BrowseUsrCtrl1->SelectedJID;
}

void JoinConferenceForm::cmdJoin_Click()
{
    if (!stanzas::send(client_, roomstanzas::askRoom(roomJid())))
        return client_.desktop.boxes->exclamation(
            tr("Group Chat"), tr("You are not connected, or this is no name for a room."));
    ResetJoinDialog();
    hide();
}

void JoinConferenceForm::ResetJoinDialog()
{
    invited_ = false;
    ui_->Check1->setChecked(false);
    ui_->BrowseUsrCtrl1->show();
    ui_->OptPublic->setChecked(true);
    ui_->lblRoomName->setEnabled(false);
    ui_->txtRoomName->setEnabled(false);
    ui_->cmdJoin->setEnabled(false);
    showParts();
    setSearchEnabled(true);
    resize(width(), usualHeight);
}

// On a small screen an invitation has room for what it needs.
void JoinConferenceForm::showParts()
{
    ui_->Frame1->setVisible(invited_);
    for (QWidget* widget : {static_cast<QWidget*>(ui_->Label1), static_cast<QWidget*>(ui_->OptPublic),
                            static_cast<QWidget*>(ui_->Option1)})
        widget->setVisible(!invited_);
    if (!invited_)
        return;
    const int mostLines = screen()->availableSize().height() < smallScreen ? 3 : 5;
    constexpr int frame = 8; // pixels, at the most
    const QMargins edges = ui_->rows->contentsMargins() + ui_->invitation->contentsMargins();
    const int wrapped = ui_->lblfromJID->heightForWidth(width() - edges.left() - edges.right() - frame);
    const int most = mostLines * ui_->lblfromJID->fontMetrics().lineSpacing();
    ui_->invitationText->setFixedHeight(qMin(wrapped, most));
    centralWidget()->layout()->activate();
    layout()->activate();
}

void JoinConferenceForm::setSearchEnabled(bool on)
{
    for (QWidget* widget : {static_cast<QWidget*>(ui_->Frame3), static_cast<QWidget*>(ui_->txtServerName),
                            static_cast<QWidget*>(ui_->lblServerName), static_cast<QWidget*>(ui_->Command1),
                            static_cast<QWidget*>(ui_->OptPublic), static_cast<QWidget*>(ui_->Option1),
                            static_cast<QWidget*>(ui_->Check1)})
        widget->setEnabled(on);
}

void JoinConferenceForm::setServer(const QString& server)
{
    roomService_ = server;
    if (ui_->txtServerName->findText(server) < 0)
        ui_->txtServerName->addItem(server);
    if (ui_->txtServerName->count() > mostServers)
        ui_->txtServerName->removeItem(0);
    ui_->txtServerName->setCurrentText(server);
    ui_->txtServerName->lineEdit()->setCursorPosition(0);
}

void JoinConferenceForm::openInvitation(const RoomInvitation& invitation)
{
    ResetJoinDialog();
    invited_ = true;
    ui_->BrowseUsrCtrl1->hide();
    ui_->txtServerName->clear(); // of former invitations
    for (const auto& server : invitation.servers)
        setServer(server);
    ui_->txtNick->setText(client_.Gateway().UserName());
    ui_->txtRoomName->setText(invitation.room);
    ui_->lblfromJID->setText(
        (invitation.from + QStringLiteral(" : ") + invitation.text).left(longestInvitation));
    showParts();
    resize(width(), invitedHeight);
    setSearchEnabled(false);
    ui_->cmdJoin->setEnabled(true);
    show();
    if (!isActiveWindow())
        QApplication::alert(this);
}

void JoinConferenceForm::nameRoom(const QString& room)
{
    ui_->txtServerName->setCurrentText(behindAt(room));
    ui_->txtRoomName->setText(room.left(room.indexOf(u'@')));
    ui_->txtNick->setText(client_.Gateway().UserName());
}
