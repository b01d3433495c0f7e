#include "desktop/PlainNotice.h"

#include <QRegularExpression>

QString plainNotice(const QString& text)
{
    static const QRegularExpression markup(QStringLiteral("([<&])(?=[A-Za-z/!?#])"));
    static const QString wordJoiner(QChar(0x2060));
    return QString(text).replace(markup, QStringLiteral("\\1") + wordJoiner);
}
