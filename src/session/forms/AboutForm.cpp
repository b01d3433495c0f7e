#include "session/forms/AboutForm.h"

#include "contacts/Client.h"
#include "desktop/forms/ImageList.h"

#include "Revision.h"
#include "ui_AboutForm.h"

AboutForm::AboutForm(Client& client, FormRegistry& registry)
    : Form(registry, QStringLiteral("AboutForm")), ui_(std::make_unique<Ui::AboutForm>())
{
    ui_->setupUi(this);
    ui_->picIcon->setPixmap(
        ImageList::icon(QStringLiteral("breloim")).pixmap(ui_->picIcon->minimumSize(), devicePixelRatioF()));
    showVersions();
    showWebSite(client);
    setDefaultButton(ui_->cmdOK);
    setCancelButton(ui_->cmdOK);
    ui_->cmdOK->setFocus();
    connect(ui_->cmdOK, &QPushButton::clicked, this, [this] { requestUnload(CloseMode::Code); });
}

AboutForm::~AboutForm() = default;

void AboutForm::showVersions()
{
    ui_->lblVersion->setText(tr("Version %1").arg(QStringLiteral(BRELO_VERSION)));
    ui_->lblRevision->setText(tr("Revision %1").arg(QStringLiteral(BRELO_REVISION)));
    ui_->txtNotices->appendPlainText(tr("\nIt stands on Qt %1, QtKeychain %2, GNU SASL %3 and pugixml %4, "
                                        "each under the licence of its own "
                                        "authors.")
                                         .arg(QString::fromLatin1(qVersion()), QStringLiteral(BRELO_KEYCHAIN),
                                              QStringLiteral(BRELO_GSASL), QStringLiteral(BRELO_PUGIXML)));
    ui_->txtNotices->moveCursor(QTextCursor::Start);
}

void AboutForm::showWebSite(Client& client)
{
    const QString host = client.site.WebSite;
    ui_->lblWebSite->setVisible(!host.isEmpty());
    const QString page = QStringLiteral("https://%1/").arg(host);
    ui_->lblWebSite->setText(
        QStringLiteral("<a href=\"%1\">%2</a>").arg(page.toHtmlEscaped(), host.toHtmlEscaped()));
    connect(ui_->lblWebSite, &QLabel::linkActivated, this,
            [&client](const QString& link) { client.desktop.links->open(link); });
}
