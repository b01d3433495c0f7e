#include "engine/wire/socket/CertificateCheck.h"

#include <QCryptographicHash>

namespace
{

// The common name, or what stands in its place; subject and issuer are the other end's words.
QString nameOf(const QStringList& commonName, const QStringList& organisation)
{
    return (commonName.isEmpty() ? organisation : commonName).join(QStringLiteral(", "));
}

} // namespace

CertificateInfo certificateInfo(const QString& server, const QSslCertificate& certificate,
                                const QList<QSslError>& errors)
{
    CertificateInfo info;
    info.server = server;
    info.subject = nameOf(certificate.subjectInfo(QSslCertificate::CommonName),
                          certificate.subjectInfo(QSslCertificate::Organization));
    info.issuer = nameOf(certificate.issuerInfo(QSslCertificate::CommonName),
                         certificate.issuerInfo(QSslCertificate::Organization));
    info.notBefore = certificate.effectiveDate();
    info.notAfter = certificate.expiryDate();
    if (!certificate.isNull())
        info.sha256 = certificate.digest(QCryptographicHash::Sha256);
    for (const auto& error : errors) {
        const QString text = error.errorString();
        if (!info.problems.contains(text))
            info.problems += text;
    }
    return info;
}
