#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class Stanza;

// What the answers to browse requests (jabber:iq:browse, XEP-0011) offer. Of an odd element what is missing
// is mended, or it is left out; the rest of the answer counts.
namespace browseanswers
{

// A row of the list in which the person chooses.
struct Row {
    QString jid;
    QString name;
};

// The directories of a server: those to show, and those to be asked for what they hold.
struct Directories {
    QList<Row> rows;
    QStringList toBrowse;
};

// The room services of a kind, "public" or "private".
QStringList roomServices(const Stanza& answer, const QString& kind);
QList<Row> rooms(const Stanza& answer);
Directories directories(const Stanza& answer, const QString& server);
// What a directory holds; the server itself is none of it.
QList<Row> directoryServices(const Stanza& answer, const QString& server);

} // namespace browseanswers
