#pragma once

#include "messaging/Stamps.h"

#include <QDateTime>
#include <QHash>
#include <QString>

struct Client;

// The conversation logs: a text file per peer and account, UTF-8 with CR LF, readable by its owner only. A
// file is open only while it is written to. Every operation cuts JIDs at the first "/", and the writers
// return what went wrong as a sentence, empty for success; a line that could not be written whole leaves the
// file as it was.
class ConversationLog
{
public:
    // Both must outlive the object.
    ConversationLog(const Client& client, Stamps& stamps);

    QString WriteLogHeader(const QString& peer);
    // Writes "from (time): body" into the log of `to` when `useTo`, else into that of `from`.
    // The time is that at which it was written, where that is known.
    QString WriteLogLine(const QString& body, const QString& from, const QString& to, bool useTo,
                         const QDateTime& written = {});
    // Notes in the log of `peer` that a message of the person's, written before as any other, did not go out,
    // or may not have arrived.
    QString WriteReturned(const QString& body, const QString& peer, bool uncertain);
    // Leaves one empty line. The folder must exist already.
    QString ClearMessageLog(const QString& peer);

    // Whether a line of a log is shown bold. Kept: the text compared is one character short, so that none
    // ever is.
    static bool isHeaderLine(const QString& line);

    // The log's file under the present account of the connection.
    QString path(const QString& peer) const;

private:
    QString append(const QString& peer, const QString& head, const QString& body,
                   bool afterBlankLine = false);

    const Client& client_;
    Stamps& stamps_;
    // Paths by peer, for one account; made anew when the connection's account is another.
    mutable QHash<QString, QString> paths_;
    mutable QString pathsOf_;
};
