#pragma once

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
