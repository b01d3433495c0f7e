#include "engine/Diagnostics.h"

#include <QRegularExpression>

Q_LOGGING_CATEGORY(lcEngine, "brelo.engine", QtFatalMsg)

QString masked(const QString& xml)
{
    static const QRegularExpression secrets(
        QStringLiteral("(<([^>\\s/]*password[^>\\s/"
                       "]*|digest|hash|token|key|auth|response|challenge|success)\\b[^>]*>)[^<]+"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression fields(
        QStringLiteral("(<field\\b[^>]*\\bvar=[\"'][^\"']*password[^\"']*[\"'][^>]*>\\s*<value>)[^<]+"),
        QRegularExpression::CaseInsensitiveOption);
    return QString(xml).replace(secrets, QStringLiteral("\\1***")).replace(fields, QStringLiteral("\\1***"));
}
