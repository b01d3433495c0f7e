#pragma once

#include <QList>
#include <QString>

// The texts of the stanzas that search a directory of people (jabber:iq:search, XEP-0055). Values are escaped
// as they are placed.
namespace searchstanzas
{

struct Field {
    QString name;
    QString value;
};

// Asks a directory what it can be searched by.
QString init(const QString& directory);
// The search. Fields without a value stay out, and so do those that can't be sent.
QString result(const QString& directory, const QList<Field>& fields);
// Asks a server whether it is there.
QString checkServer(const QString& server);

} // namespace searchstanzas
