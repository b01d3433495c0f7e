#include "messaging/FileComponent.h"

#include <QCryptographicHash>

namespace
{

constexpr qsizetype longestComponent = 255; // bytes, on every common file system
constexpr qsizetype keptOfLongName = 150;   // bytes

bool isHexDigit(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

// Whether the "%" at `i` would be taken for an escape of ours.
bool readsAsEscape(const QString& name, qsizetype i)
{
    if (i + 1 >= name.size())
        return false;
    return name.at(i + 1) == u'~' ||
           (i + 2 < name.size() && isHexDigit(name.at(i + 1)) && isHexDigit(name.at(i + 2)));
}

bool mustEscape(const QString& name, qsizetype i)
{
    const QChar c = name.at(i);
    return c == u'/' || c.unicode() < 0x20 || c.unicode() == 0x7F || (c == u'%' && readsAsEscape(name, i));
}

void appendEscape(QString& out, QChar c)
{
    out += QStringLiteral("%%1").arg(c.unicode(), 2, 16, QChar(u'0'));
}

QString shortened(const QString& component, const QString& name)
{
    const auto digest = QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha256).toHex();
    qsizetype kept = qMin(component.size(), keptOfLongName);
    while (kept > 0 && QStringView(component).left(kept).toUtf8().size() > keptOfLongName)
        --kept;
    if (kept > 0 && component.at(kept - 1).isHighSurrogate())
        --kept;
    return component.left(kept) + QStringLiteral("%~") + QString::fromLatin1(digest);
}

} // namespace

QString fileComponent(const QString& name, const QString& suffix)
{
    QString out;
    out.reserve(name.size() + suffix.size());
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (mustEscape(name, i))
            appendEscape(out, name.at(i));
        else
            out += name.at(i);
    }
    if (out.size() > longestComponent || out.toUtf8().size() + suffix.toUtf8().size() > longestComponent)
        return shortened(out, name) + suffix;
    out += suffix;
    if (out.isEmpty())
        return QStringLiteral("%~");
    if (out == u"." || out == u"..")
        return out.replace(u'.', QStringLiteral("%2e"));
    return out;
}
