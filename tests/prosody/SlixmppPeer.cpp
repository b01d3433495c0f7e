#include "prosody/SlixmppPeer.h"

#include "engine/Jid.h"
#include "support/ChildProcess.h"
#include "support/ProsodyServer.h"

#include <QJsonDocument>

SlixmppPeer::SlixmppPeer(const ProsodyServer& server, const QString& name, const QString& password)
{
    child::endsWithUs(process_);
    QObject::connect(&process_, &QProcess::readyReadStandardOutput, &process_, [this] { read(); });
    // Debian's own Python: another one in the path has no slixmpp.
    process_.start("/usr/bin/python3",
                   {qEnvironmentVariable("BRELO_SOURCE_DIR") + QStringLiteral("/tests/prosody/peer.py"),
                    name + QStringLiteral("@localhost"), password, QString::number(server.port()),
                    server.certificateFile()});
}

SlixmppPeer::~SlixmppPeer()
{
    process_.closeWriteChannel();
    if (!process_.waitForFinished(5000)) {
        process_.kill();
        process_.waitForFinished();
    }
}

void SlixmppPeer::tell(const char* command, QJsonObject arguments)
{
    arguments[QStringLiteral("do")] = QString::fromLatin1(command);
    process_.write(QJsonDocument(arguments).toJson(QJsonDocument::Compact) + '\n');
}

const Stanza* SlixmppPeer::latest(const Test& test) const
{
    for (auto stanza = stanzas_.rbegin(); stanza != stanzas_.rend(); ++stanza) {
        if (test(**stanza))
            return stanza->get();
    }
    return nullptr;
}

bool SlixmppPeer::heardPresence(const QString& from, const QString& type) const
{
    return heard([&](const Stanza& stanza) {
        return stanza.kind() == Stanza::Kind::Presence && jid::bare(stanza.From()) == from &&
               stanza.PresenceFields().Type() == type;
    });
}

bool SlixmppPeer::heardBody(const QString& text) const
{
    return heard([&](const Stanza& stanza) {
        return stanza.kind() == Stanza::Kind::Message && stanza.MessageFields().Body() == text;
    });
}

void SlixmppPeer::read()
{
    while (process_.canReadLine()) {
        const auto line = QJsonDocument::fromJson(process_.readLine()).object();
        if (line.contains("event"))
            events_ += line[QStringLiteral("event")].toString();
        else if (auto stanza = Stanza::fromXml(line[QStringLiteral("stanza")].toString()))
            stanzas_.push_back(std::move(stanza));
    }
}
