#include "messaging/LinkScanner.h"

#include <QRegularExpression>

namespace
{

// Most messages hold no link, and the look for one has to cost next to nothing.
bool mayHoldLink(const QString& text)
{
    return text.contains(u':') || text.contains(u"www.", Qt::CaseInsensitive);
}

qsizetype trimmedLength(QStringView link)
{
    qsizetype length = link.size();
    while (length > 0) {
        const QChar last = link.at(length - 1);
        const bool unopened = last == u')' && link.left(length).count(u')') > link.left(length).count(u'(');
        if (!unopened && !QStringView(u".,;:!?'\"]}>").contains(last))
            break;
        --length;
    }
    return length;
}

} // namespace

QList<FoundLink> findLinks(const QString& text)
{
    if (!mayHoldLink(text))
        return {};
    static const QRegularExpression pattern(
        QStringLiteral("\\b((?:https?|ftp)://|mailto:|xmpp:|callto:|www\\.)[^\\s<>\"]+"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    QList<FoundLink> links;
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext()) {
        const auto match = matches.next();
        const qsizetype length = trimmedLength(match.capturedView());
        if (length <= match.capturedLength(1))
            continue;
        const QString link = text.mid(match.capturedStart(), length);
        const bool bare = link.startsWith(u"www.", Qt::CaseInsensitive);
        links.append({match.capturedStart(), length, bare ? QStringLiteral("http://") + link : link});
    }
    return links;
}
