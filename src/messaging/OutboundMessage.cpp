#include "messaging/OutboundMessage.h"

#include "engine/Xml.h"

#include <algorithm>

namespace outbound
{
namespace
{

bool unsendable(QChar c)
{
    const auto u = c.unicode();
    return (u < 0x20 && u != '\t' && u != '\n' && u != '\r') || u >= 0xFFFE;
}

// Surrogates without their other half can't be encoded.
void replaceLoneSurrogates(QString& text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
            ++i;
        else if (c.isSurrogate())
            text[i] = QChar::ReplacementCharacter;
    }
}

} // namespace

QString address(const QString& jid, const QString& resource)
{
    return resource.isEmpty() ? jid : jid + u'/' + resource;
}

QString sendable(const QString& body)
{
    QString text = body;
    std::replace_if(text.begin(), text.end(), unsendable, QChar(QChar::ReplacementCharacter));
    replaceLoneSurrogates(text);
    return text;
}

QString composing(const QString& to)
{
    return QStringLiteral("<message to=\"") + xml::escaped(to) +
           QStringLiteral(
               "\" type=\"chat\"><x xmlns=\"jabber:x:event\"><composing></composing></x></message>");
}

} // namespace outbound
