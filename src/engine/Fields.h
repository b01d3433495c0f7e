#pragma once

#include <QString>
#include <pugixml.hpp>

// The views that the client has of a stanza. A view doesn't own: it lives no longer than the stanza or packet
// that handed it out. Getters yield "" for what is absent.

class Stanza;

// An <iq/> (RFC 6120, 8.2.3).
class IqFields
{
public:
    explicit IqFields(const Stanza& stanza) : stanza_(&stanza) {}

    // The stanza as a parsed document: select_node("//iq/error") works on it.
    const pugi::xml_document& Document() const;
    // The whole stanza's text; made once, when it is first asked for.
    const QString& Xml() const;
    QString From() const;
    QString Id() const;
    QString Type() const;

private:
    const Stanza* stanza_;
};

// A <message/>, received or about to be sent.
class MessageFields
{
public:
    explicit MessageFields(pugi::xml_node root) : root_(root) {}

    QString Xml() const;
    QString Subject() const;
    QString Body() const;
    QString To() const;
    QString From() const;
    QString Type() const;
    // The namespace of the message's <x/> child: jabber:x:event or jabber:x:conference before any other.
    QString XNamespace() const;

    void setSubject(const QString& text);
    void setBody(const QString& text);
    void setTo(const QString& jid);
    void setFrom(const QString& jid);
    void setType(const QString& type);

private:
    pugi::xml_node root_;
};

// A <presence/>, received or about to be sent. "connect" and "close" are the engine's own types, with no such
// stanza on the wire.
class PresenceFields
{
public:
    explicit PresenceFields(pugi::xml_node root) : root_(root) {}

    QString Xml() const;
    QString Status() const;
    QString Show() const;
    QString From() const;
    QString Type() const;

    void setStatus(const QString& text);
    void setShow(const QString& word);
    void setTo(const QString& jid);
    void setFrom(const QString& jid);

    void SetSubscribe();
    void SetSubscribed();
    void SetUnsubscribe();
    void SetUnsubscribed();
    void SetUnavailable();
    void SetAvailable();
    void SetProbe();

    bool IsSubscribe() const;
    bool IsSubscribed() const;
    bool IsUnsubscribe() const;
    bool IsUnsubscribed() const;
    bool IsUnavailable() const;
    bool IsAvailable() const;

private:
    pugi::xml_node root_;
};

// Stanza text as the caller wrote it.
class RawFields
{
public:
    explicit RawFields(QString& xml) : xml_(&xml) {}

    QString Xml() const { return *xml_; }
    void setXml(const QString& text) { *xml_ = text; }

private:
    QString* xml_;
};
