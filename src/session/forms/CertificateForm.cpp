#include "session/forms/CertificateForm.h"

#include "session/forms/ui_CertificateForm.h"

#include <QFontDatabase>
#include <QLocale>

namespace
{

// Two lines of sixteen pairs: as other programs print a SHA-256 for a comparison by eye.
QString fingerprint(const QByteArray& sha256)
{
    const QString pairs = QString::fromLatin1(sha256.toHex(':')).toUpper();
    return pairs.left(47) + u'\n' + pairs.mid(48);
}

QString change(CertificateInfo::Before before)
{
    using enum CertificateInfo::Before;
    return before == Verified
               ? CertificateForm::tr("\n\nSomething has changed: the last time it was verified.")
           : before == Pinned
               ? CertificateForm::tr("\n\nIt has changed: it is not the one that you accepted for good.")
               : QString();
}

} // namespace

CertificateForm::CertificateForm(const CertificateInfo& info, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::CertificateForm>())
{
    ui_->setupUi(this);
    ui_->lblQuestion->setText(
        tr("The certificate of %1 could not be verified: %2.%3\n\nWhoever holds it may be "
           "somebody else who reads along. Accept it only if you know it.")
            .arg(info.server, info.problems.join(QStringLiteral("; ")), change(info.before)));
    const QLocale locale;
    addFact(tr("Subject"), info.subject, QStringLiteral("lblSubject"));
    addFact(tr("Issuer"), info.issuer, QStringLiteral("lblIssuer"));
    addFact(tr("Valid from"), locale.toString(info.notBefore, QLocale::ShortFormat),
            QStringLiteral("lblFrom"));
    addFact(tr("Valid until"), locale.toString(info.notAfter, QLocale::ShortFormat),
            QStringLiteral("lblUntil"));
    addFact(tr("SHA-256"), fingerprint(info.sha256), QStringLiteral("lblFingerprint"));
    connect(ui_->cmdRefuse, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui_->cmdOnce, &QPushButton::clicked, this, [this] { finish(CertificateAnswer::AcceptOnce); });
    connect(ui_->cmdAlways, &QPushButton::clicked, this, [this] { finish(CertificateAnswer::AcceptAlways); });
    ui_->cmdRefuse->setFocus();
    // All of it is to be read before it is answered, whatever the font.
    resize(sizeHint());
    setMinimumHeight(layout()->totalHeightForWidth(width()));
}

CertificateForm::~CertificateForm() = default;

void CertificateForm::addFact(const QString& label, const QString& value, const QString& name)
{
    auto* text = new QLabel(value, this);
    text->setObjectName(name);
    text->setTextFormat(Qt::PlainText);
    text->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
    text->setFocusPolicy(Qt::StrongFocus);
    const bool isFingerprint = value.contains(u'\n');
    text->setWordWrap(!isFingerprint);
    if (isFingerprint)
        text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    ui_->facts->addRow(label, text);
}

void CertificateForm::finish(CertificateAnswer answer)
{
    answer_ = answer;
    accept();
}
