#pragma once

#include "engine/Jid.h"
#include "engine/Stanza.h"
#include "support/ChildProcess.h"
#include "support/ProsodyServer.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

// A person who uses another program: slixmpp, in a process of its own.
class SlixmppPeer
{
public:
    using Test = std::function<bool(const Stanza&)>;

    // Signs in; the peer's address is `name`@localhost.
    SlixmppPeer(const ProsodyServer& server, const QString& name, const QString& password)
    {
        child::endsWithUs(process_);
        QObject::connect(&process_, &QProcess::readyReadStandardOutput, &process_, [this] { read(); });
        // Debian's own Python: another one in the path has no slixmpp.
        process_.start("/usr/bin/python3",
                       {qEnvironmentVariable("BRELO_SOURCE_DIR") + "/tests/prosody/peer.py",
                        name + "@localhost", password, QString::number(server.port()),
                        server.certificateFile()});
    }
    ~SlixmppPeer()
    {
        process_.closeWriteChannel();
        if (!process_.waitForFinished(5000)) {
            process_.kill();
            process_.waitForFinished();
        }
    }

    bool isOnline() const { return happened("online"); }
    // What became of the connection or of a command; see peer.py.
    bool happened(const QString& event) const { return events_.contains(event); }
    // What went wrong in the process, for a failed test.
    QByteArray problem() { return process_.readAllStandardError(); }

    // One command of peer.py.
    void tell(const char* command, QJsonObject arguments = {})
    {
        arguments["do"] = command;
        process_.write(QJsonDocument(arguments).toJson(QJsonDocument::Compact) + '\n');
    }
    void say(const QString& to, const QString& body) { tell("send", {{"to", to}, {"body", body}}); }
    void presence(const QString& to, const QString& type) { tell("presence", {{"to", to}, {"type", type}}); }

    // The latest stanza that came in and passes, or null.
    const Stanza* latest(const Test& test) const
    {
        const auto found = std::find_if(stanzas_.rbegin(), stanzas_.rend(),
                                        [&test](const auto& stanza) { return test(*stanza); });
        return found == stanzas_.rend() ? nullptr : found->get();
    }
    bool heard(const Test& test) const { return latest(test) != nullptr; }
    // A presence of this type from any resource of the bare JID; "" for available.
    bool heardPresence(const QString& from, const QString& type) const
    {
        return heard([&](const Stanza& stanza) {
            return stanza.kind() == Stanza::Kind::Presence && jid::bare(stanza.From()) == from &&
                   stanza.PresenceFields().Type() == type;
        });
    }
    bool heardBody(const QString& text) const
    {
        return heard([&](const Stanza& stanza) {
            return stanza.kind() == Stanza::Kind::Message && stanza.MessageFields().Body() == text;
        });
    }
    void forget() { stanzas_.clear(); }

private:
    void read()
    {
        while (process_.canReadLine()) {
            const auto line = QJsonDocument::fromJson(process_.readLine()).object();
            if (line.contains("event"))
                events_ += line["event"].toString();
            else if (auto stanza = Stanza::fromXml(line["stanza"].toString()))
                stanzas_.push_back(std::move(stanza));
        }
    }

    QProcess process_;
    QStringList events_;
    std::vector<std::shared_ptr<Stanza>> stanzas_;
};
