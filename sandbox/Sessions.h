#pragma once

#include "sandbox/Element.h"

#include <QHash>
#include <QList>

namespace sandbox
{

class Connection;

// Who is signed in.
class Sessions
{
public:
    void add(Connection* connection);
    void remove(Connection* connection);

    // The signed-in resources of a bare JID, in the order of sign-in.
    QList<Connection*> of(const QString& bareJid) const { return byJid_.value(bareJid); }
    Connection* exact(const QString& fullJid) const;
    // Where a message goes: the resource named if it is there, else the available one of the highest
    // priority.
    Connection* best(const QString& jid) const;
    QList<Connection*> available(const QString& bareJid) const;
    QList<Connection*> all() const;

    void send(const QString& bareJid, const Element& stanza) const;

private:
    QHash<QString, QList<Connection*>> byJid_;
};

} // namespace sandbox
