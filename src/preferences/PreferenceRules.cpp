#include "preferences/PreferenceRules.h"

#include <QRegularExpression>

namespace preferences
{

int balloonMilliseconds(const QString& seconds)
{
    const int value = (seconds.trimmed() + QStringLiteral("000")).toInt();
    return value >= 1'000 && value <= 3'600'000 ? value : 0;
}

bool isPriority(const QString& text)
{
    bool number = false;
    const int priority = text.trimmed().toInt(&number);
    return number && priority >= -128 && priority <= 127;
}

bool isHost(const QString& text)
{
    static const QRegularExpression nameOrIpv6(
        QStringLiteral("^([^\\s:/@]+|[0-9A-Fa-f:.]*:[0-9A-Fa-f:.]*:[0-9A-Fa-f:.]*)$"));
    return nameOrIpv6.match(text.trimmed()).hasMatch();
}

} // namespace preferences
