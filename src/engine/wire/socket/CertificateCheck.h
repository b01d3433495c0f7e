#pragma once

#include "engine/ConnectionHost.h"

#include <QList>
#include <QSslCertificate>
#include <QSslError>

// What is to be shown to a person of a certificate that didn't verify.
CertificateInfo certificateInfo(const QString& server, const QSslCertificate& certificate,
                                const QList<QSslError>& errors);
