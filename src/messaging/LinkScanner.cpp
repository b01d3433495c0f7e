#include "messaging/LinkScanner.h"

#include "desktop/SafeLink.h"

#include <QRegularExpression>
#include <QUrl>

namespace
{

// Most messages hold no link, and the look for one has to cost next to nothing.
bool mayHoldLink(const QString& text)
{
    return text.contains(u':') || text.contains(u"www.", Qt::CaseInsensitive);
}

// A sentence's signs at the end don't belong to a link, save a bracket that it opened itself.
qsizetype trimmedLength(QStringView link)
{
    qsizetype length = link.size();
    qsizetype unopened[] = {link.count(u')') - link.count(u'('), link.count(u'}') - link.count(u'{')};
    while (length > 0) {
        const QChar last = link.at(length - 1);
        const bool bracket = last == u')' || last == u'}';
        auto& open = unopened[last == u'}'];
        if (bracket ? open <= 0 : !QStringView(u".,;:!?'\"]>").contains(last))
            break;
        open -= bracket;
        --length;
    }
    return length;
}

// As the desktop takes it: what an address can't hold is written in its escapes. Empty where no program could
// open it, or none may.
QString openable(const QString& link)
{
    if (link.size() > longestLink)
        return {};
    static const QRegularExpression stray(QStringLiteral("%(?![0-9A-Fa-f]{2})"));
    QString whole = link.startsWith(u"www.", Qt::CaseInsensitive) ? QStringLiteral("http://") + link : link;
    whole.replace(stray, QStringLiteral("%25"));
    const QString encoded = QString::fromLatin1(QUrl(whole, QUrl::TolerantMode).toEncoded());
    return isSafeLink(encoded) ? encoded : QString();
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
        const QString target = openable(text.mid(match.capturedStart(), length));
        if (!target.isEmpty())
            links.append({match.capturedStart(), length, target});
    }
    return links;
}
