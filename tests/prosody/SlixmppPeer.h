#pragma once

#include "engine/Stanza.h"

#include <QJsonObject>
#include <QProcess>

#include <functional>
#include <memory>
#include <vector>

class ProsodyServer;

// A person who uses another program: slixmpp, in a process of its own.
class SlixmppPeer
{
public:
    using Test = std::function<bool(const Stanza&)>;

    // Signs in; the peer's address is `name`@localhost.
    SlixmppPeer(const ProsodyServer& server, const QString& name, const QString& password);
    ~SlixmppPeer();

    bool isOnline() const { return happened("online"); }
    // What became of the connection or of a command; see peer.py.
    bool happened(const QString& event) const { return events_.contains(event); }
    // What went wrong in the process, for a failed test.
    QByteArray problem() { return process_.readAllStandardError(); }

    // One command of peer.py.
    void tell(const char* command, QJsonObject arguments = {});
    void say(const QString& to, const QString& body) { tell("send", {{"to", to}, {"body", body}}); }
    void presence(const QString& to, const QString& type) { tell("presence", {{"to", to}, {"type", type}}); }

    // The latest stanza that came in and passes, or null.
    const Stanza* latest(const Test& test) const;
    bool heard(const Test& test) const { return latest(test) != nullptr; }
    // A presence of this type from any resource of the bare JID; "" for available.
    bool heardPresence(const QString& from, const QString& type) const;
    bool heardBody(const QString& text) const;
    void forget() { stanzas_.clear(); }

private:
    void read();

    QProcess process_;
    QStringList events_;
    std::vector<std::shared_ptr<Stanza>> stanzas_;
};
