#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <pugixml.hpp>

// Service discovery (XEP-0030) as the bridge reads it.
namespace disco
{

inline const QString infoQuery = QStringLiteral("<query xmlns=\"http://jabber.org/protocol/disco#info\"/>");
inline const QString itemsQuery = QStringLiteral("<query xmlns=\"http://jabber.org/protocol/disco#items\"/>");

struct Identity {
    QString category;
    QString type;
    QString name;
};

struct Info {
    // From an answer's root. Empty for a null node, or when it holds no disco#info.
    static Info read(pugi::xml_node iq);

    bool isEmpty() const { return identities.isEmpty() && features.isEmpty(); }
    bool has(const QString& feature) const { return features.contains(feature); }
    bool hasIdentity(const QString& category, const QString& type) const;

    QList<Identity> identities;
    // In the order of the answer.
    QStringList features;
};

struct Item {
    QString jid;
    QString node;
    QString name;
};

// From an answer's root; no item without a JID.
QList<Item> items(pugi::xml_node iq);

} // namespace disco
