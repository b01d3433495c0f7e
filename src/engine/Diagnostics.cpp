#include "engine/Diagnostics.h"

#include <QRegularExpression>

Q_LOGGING_CATEGORY(lcEngine, "brelo.engine", QtFatalMsg)

QString masked(const QString& xml)
{
    static const QRegularExpression secrets(
        QStringLiteral("(<(password|digest|hash|token|key|auth|response|challenge|success)\\b[^>]*>)[^<]+"));
    static const QRegularExpression fields(
        QStringLiteral("(<field\\b[^>]*\\bvar=[\"'][^\"']*password[^\"']*[\"'][^>]*>\\s*<value>)[^<]+"));
    return QString(xml).replace(secrets, QStringLiteral("\\1***")).replace(fields, QStringLiteral("\\1***"));
}
