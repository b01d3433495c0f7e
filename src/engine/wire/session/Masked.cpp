#include "engine/wire/session/Masked.h"

#include <QRegularExpression>

QString masked(const QString& xml)
{
    static const QRegularExpression secrets(
        QStringLiteral("(<(password|digest|hash|token|key|auth|response|challenge|success)\\b[^>]*>)[^<]+"));
    static const QRegularExpression fields(
        QStringLiteral("(<field\\b[^>]*\\bvar=[\"'][^\"']*password[^\"']*[\"'][^>]*>\\s*<value>)[^<]+"));
    return QString(xml).replace(secrets, QStringLiteral("\\1***")).replace(fields, QStringLiteral("\\1***"));
}
