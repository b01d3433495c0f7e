#pragma once

#include "engine/Stanza.h"

#include <QHash>
#include <QString>

class Translator;

// Who translates the presences to and from which bare JID. Presence is what floods: that of anybody else is
// not looked into.
class PresenceRoutes
{
public:
    // The empty JID stands for the presence that the client sends to all.
    void add(const QString& bareJid, Translator& translator)
    {
        routes_.insert(bareJid.toLower(), &translator);
    }
    void remove(const QString& bareJid) { routes_.remove(bareJid.toLower()); }
    void clear() { routes_.clear(); }

    // Null for nobody.
    Translator* to(pugi::xml_node presence) const;
    Translator* from(const Stanza& presence) const;

private:
    QHash<QString, Translator*> routes_;
};
