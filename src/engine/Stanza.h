#pragma once

#include "engine/Fields.h"

#include <QString>
#include <pugixml.hpp>

#include <memory>

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

// One received stanza, read only: its parsed document and the views on it.
class Stanza
{
public:
    enum class Kind {
        Iq,
        Message,
        Presence,
        Other,
        // A message of the client's own that comes back: it never left, or nobody knows whether it arrived.
        Unsent,
        Uncertain,
    };

    // Takes the document whose root element is the stanza. The root carries no xmlns of the stream's own.
    explicit Stanza(std::unique_ptr<pugi::xml_document> document);

    // A stanza of the engine's own: a presence of type "connect" or "close", without a sender.
    static std::shared_ptr<Stanza> notice(const char* type);
    // A message of the client's own, as `kind` says; null for a stanza by which nobody told anything.
    static std::shared_ptr<Stanza> returned(const QByteArray& text, Kind kind);
    // Null when the text isn't one well-formed element.
    static std::shared_ptr<Stanza> fromXml(const QString& text);

    Kind kind() const { return kind_; }
    bool isReturned() const { return kind_ == Kind::Unsent || kind_ == Kind::Uncertain; }
    const pugi::xml_document& document() const { return *document_; }
    pugi::xml_node root() const { return document_->document_element(); }

    QString From() const;
    QString To() const;
    // The whole stanza as text; made once, when it is first asked for.
    const QString& Xml() const;
    // The namespace of the stanza's extension child: jabber:x:event or jabber:x:conference before any other.
    QString XNamespace() const;

    ::MessageFields MessageFields() const { return ::MessageFields(root()); }
    ::IqFields IqFields() const { return ::IqFields(*this); }
    ::PresenceFields PresenceFields() const { return ::PresenceFields(root()); }

private:
    std::unique_ptr<pugi::xml_document> document_;
    mutable QString xml_;
    Kind kind_;
};
