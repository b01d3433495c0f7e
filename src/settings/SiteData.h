#pragma once

#include <QString>

// The product's own hosts. They stand under reserved names until a site exists, and the settings file can
// override them in its section "Site" with the keys named here. Where a host is empty, nothing is sent to it.
struct SiteData {
    QString DefaultServer = QStringLiteral("jabber.breloim.example");
    QString SisterServer = QStringLiteral("im.breloim.example");
    QString ThirdServer = QStringLiteral("chat.breloim.example");
    QString WebSite;    // host of the product's pages, without a scheme
    QString UpdateHost; // host of the contact that is told the running version at sign-in
};
