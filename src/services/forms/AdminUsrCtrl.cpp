#include "services/forms/AdminUsrCtrl.h"

#include "contacts/Client.h"
#include "contacts/RosterStanzas.h"
#include "engine/StanzaError.h"
#include "services/ServerAdmin.h"
#include "ui_AdminUsrCtrl.h"

#include <QKeyEvent>
#include <QShowEvent>

namespace
{

constexpr int bodyLines = 3;
constexpr int listLines = 9;
constexpr qsizetype longestReason = 200;

QString reasonOf(const Stanza& refusal)
{
    return StanzaError::of(refusal.root()).sentence().left(longestReason);
}

} // namespace

AdminUsrCtrl::AdminUsrCtrl(Client& client) : client_(client), ui_(std::make_unique<Ui::AdminUsrCtrl>())
{
    ui_->setupUi(this);
    for (auto* body : {ui_->txtMsgOnline, ui_->txtMsgMOTD})
        body->setFixedHeight(body->fontMetrics().lineSpacing() * bodyLines +
                             2 * (body->frameWidth() + int(body->document()->documentMargin())));
    say({});
    setUpUsers();
    connect(ui_->cmdSendOnline, &QPushButton::clicked, this, &AdminUsrCtrl::cmdSendOnline_Click);
    connect(ui_->cmdSetMOTD, &QPushButton::clicked, this, &AdminUsrCtrl::cmdSetMOTD_Click);
    connect(ui_->cmdChangePWD, &QPushButton::clicked, this, &AdminUsrCtrl::cmdChangePWD_Click);
}

AdminUsrCtrl::~AdminUsrCtrl() = default;

void AdminUsrCtrl::setUpUsers()
{
    auto* users = ui_->OnlineUsers;
    users->hide();
    users->setFixedHeight(users->fontMetrics().lineSpacing() * listLines);
    users->setAction(tr("Change &Password"));
    connect(ui_->cmdUsers, &QPushButton::toggled, users, &QWidget::setVisible);
    connect(users, &ResultGrid::messageRequested, this, &AdminUsrCtrl::messageRequested);
    connect(users, &ResultGrid::addRequested, this, [this] {
        ui_->txtUserName->setText(ui_->OnlineUsers->selectedJid());
        ui_->txtPWD->setFocus();
    });
}

void AdminUsrCtrl::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        askForCount();
}

void AdminUsrCtrl::askForCount()
{
    const bool sent = client_.isConnected() &&
                      stanzas::send(client_, serveradmin::onlineUsersQuery(client_.Gateway().Server()));
    ui_->Label9->setText(sent ? QStringLiteral("...") : QStringLiteral("?"));
    say(sent ? QString() : tr("You are not connected."));
}

void AdminUsrCtrl::OnIQ(PlugInContext& context)
{
    const auto& answer = context.Stanza();
    const bool refused = answer.IqFields().Type() == u"error";
    ui_->Label9->setText(refused ? QStringLiteral("?") : QString::number(usersOnline));
    ui_->OnlineUsers->showResults(refused ? searchanswers::Results() : serveradmin::usersOnline(answer),
                                  tr("Nobody is on line."));
    say(refused ? tr("The server does not tell how many: %1").arg(reasonOf(answer)) : QString());
}

void AdminUsrCtrl::cmdSendOnline_Click()
{
    announce(serveradmin::announceOnline(client_.Gateway().Server()), ui_->txtSubjectOnline->text(),
             *ui_->txtMsgOnline, tr("Message has been sent!"));
}

void AdminUsrCtrl::cmdSetMOTD_Click()
{
    announce(serveradmin::announceDay(client_.Gateway().Server()), ui_->txtSubjectMOTD->text(),
             *ui_->txtMsgMOTD, tr("MOTD has changed!"));
}

void AdminUsrCtrl::announce(const QString& to, const QString& subject, QPlainTextEdit& body,
                            const QString& done)
{
    const QString text = body.toPlainText();
    if (text.trimmed().isEmpty())
        return refuse(tr("Attention!"), tr("Please, enter a message."), body);
    if (!client_.isConnected() || !client_.Application)
        return tellUnsent();
    auto& packet = client_.Application->OutPacket();
    packet.Clear();
    auto fields = packet.MessageFields();
    fields.setSubject(subject);
    fields.setBody(text);
    fields.setTo(to);
    if (packet.Send())
        notify(done);
    else
        tellUnsent();
}

void AdminUsrCtrl::cmdChangePWD_Click()
{
    const QString user = ui_->txtUserName->text().trimmed();
    const QString password = ui_->txtPWD->text();
    if (!user.contains(u'@'))
        return refuse(tr("Bad Format"),
                      tr("Bad Username Format! Please type the complete ID, ex. ") +
                          QStringLiteral("someone@") + client_.site.DefaultServer,
                      *ui_->txtUserName);
    if (password != ui_->txtConfirmPWD->text())
        return refuse(tr("Can't change password!"), tr("Password not confirmed"), *ui_->txtConfirmPWD);
    if (password.isEmpty())
        return refuse(tr("Can't change password!"), tr("Please, enter the new password."), *ui_->txtPWD);
    const QString server = client_.Gateway().Server();
    if (!client_.isConnected() ||
        !stanzas::send(client_, serveradmin::passwordChange(server, user, password)))
        return tellUnsent();
    notify(tr("Password for %1 has changed !").arg(user));
}

void AdminUsrCtrl::passwordAnswered(const PlugInContext& context, const Client& client)
{
    if (context.Stanza().IqFields().Type() == u"error")
        client.desktop.boxes->critical(tr("Can't change password!"),
                                       tr("The server has refused it: %1").arg(reasonOf(context.Stanza())));
}

void AdminUsrCtrl::refuse(const QString& title, const QString& text, QWidget& control)
{
    control.setFocus();
    client_.desktop.boxes->critical(title, text);
}

void AdminUsrCtrl::notify(const QString& text)
{
    client_.desktop.boxes->information(tr("Notify"), text);
}

void AdminUsrCtrl::tellUnsent()
{
    client_.desktop.boxes->exclamation(
        tr("Attention!"), client_.isConnected() ? tr("This could not be sent.")
                                                : tr("You are not connected. Nothing was sent."));
}

void AdminUsrCtrl::say(const QString& word)
{
    ui_->lblState->setText(word);
    ui_->lblState->setVisible(!word.isEmpty());
}

void AdminUsrCtrl::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && qobject_cast<QLineEdit*>(window()->focusWidget()))
        focusNextChild();
    else
        QWidget::keyPressEvent(event);
}
