#include "messaging/RichText.h"

namespace richtext
{
namespace
{

void append(QByteArray& out, QChar c)
{
    if (c == u'\n') {
        out += "\\par\r\n";
    } else if (c == u'\\' || c == u'{' || c == u'}') {
        out += '\\';
        out += c.toLatin1();
    } else if (c == u'\t') {
        out += "\\tab ";
    } else if (c.unicode() >= 0x20 && c.unicode() < 0x7F) {
        out += c.toLatin1();
    } else {
        // A UTF-16 unit as a signed number, with "?" for readers that don't know it.
        out += "\\u" + QByteArray::number(static_cast<qint16>(c.unicode())) + '?';
    }
}

} // namespace

QByteArray document(const QString& text)
{
    QByteArray out("{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\fswiss Verdana;}}\\f0\\fs17\r\n");
    out.reserve(text.size() + 64);
    for (const QChar c : text)
        append(out, c);
    return out + "}\r\n";
}

} // namespace richtext
