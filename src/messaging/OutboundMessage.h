#pragma once

#include <QString>

// What leaves a message window.
namespace outbound
{

// The peer's JID, with the resource when there is one.
QString address(const QString& jid, const QString& resource);

// A body that XML 1.0 can carry: characters that it can't are replaced by U+FFFD, so that a pasted control
// character doesn't cost the stream.
QString sendable(const QString& body);

// The stanza of a typing event (XEP-0022).
QString composing(const QString& to);

} // namespace outbound

// When a typing event (XEP-0022) goes out: at the first change of a text, and again only after a send.
class TypingRules
{
public:
    // The text has changed. True when the event is to be sent now; it then counts as sent.
    bool textChanged()
    {
        const bool first = !composingSent_;
        composingSent_ = true;
        return first;
    }
    void messageSent() { composingSent_ = false; }

private:
    bool composingSent_ = false;
};
