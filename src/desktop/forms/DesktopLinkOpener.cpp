#include "desktop/forms/DesktopLinkOpener.h"

#include "desktop/SafeLink.h"

#include <QDesktopServices>
#include <QUrl>

bool DesktopLinkOpener::open(const QString& link)
{
    return isSafeLink(link) && QDesktopServices::openUrl(QUrl(link, QUrl::StrictMode));
}
