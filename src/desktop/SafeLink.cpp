#include "desktop/SafeLink.h"

#include <QStringList>
#include <QUrl>
#include <QUrlQuery>

#include <algorithm>

namespace
{

bool hasAttachment(const QUrl& mail)
{
    const auto items = QUrlQuery(mail).queryItems();
    return std::any_of(items.begin(), items.end(), [](const auto& item) {
        return item.first.startsWith(QLatin1String("attach"), Qt::CaseInsensitive);
    });
}

} // namespace

bool isSafeLink(const QString& link)
{
    static const QStringList web = {QStringLiteral("http"), QStringLiteral("https"), QStringLiteral("ftp")};
    static const QStringList others = {QStringLiteral("xmpp"), QStringLiteral("callto")};
    if (link.size() > longestLink)
        return false;
    const QUrl url(link, QUrl::StrictMode);
    if (!url.isValid())
        return false;
    if (web.contains(url.scheme()))
        return !url.host().isEmpty();
    // Some mail programs attach a local file that the link names.
    if (url.scheme() == QLatin1String("mailto"))
        return !url.path().isEmpty() && !hasAttachment(url);
    return others.contains(url.scheme()) && !(url.path().isEmpty() && url.host().isEmpty());
}
