#pragma once

#include <QDateTime>
#include <QString>
#include <pugixml.hpp>

#include <string_view>

// The views that the client has of a stanza. A view doesn't own: it lives no longer than the stanza or packet
// that handed it out. Getters yield "" for what is absent.

// What a <message/> and a <presence/> share, received or about to be sent.
class AddressedFields
{
public:
    QString Xml() const;
    QString To() const;
    QString From() const;
    QString Type() const;

    // An empty value takes the attribute away.
    void setTo(const QString& jid);
    void setFrom(const QString& jid);

protected:
    explicit AddressedFields(pugi::xml_node root) : root_(root) {}

    void setAttribute(const char* name, const QString& value);
    QString childText(const char* name) const;
    void setChildText(const char* name, const QString& value);

    pugi::xml_node root_;
};

// A <message/>.
class MessageFields : public AddressedFields
{
public:
    explicit MessageFields(pugi::xml_node root) : AddressedFields(root) {}

    QString Subject() const { return childText("subject"); }
    QString Body() const { return childText("body"); }
    // The namespace of the message's <x/> child: jabber:x:event or jabber:x:conference before any other.
    QString XNamespace() const;
    // When the message was written, where it was stored on the way (jabber:x:delay, XEP-0091); null else.
    QDateTime Written() const;

    void setSubject(const QString& text) { setChildText("subject", text); }
    void setBody(const QString& text) { setChildText("body", text); }
    void setType(const QString& type) { setAttribute("type", type); }
};

// A <presence/>. "connect" and "close" are the engine's own types, with no such stanza on the wire.
class PresenceFields : public AddressedFields
{
public:
    explicit PresenceFields(pugi::xml_node root) : AddressedFields(root) {}

    QString Status() const { return childText("status"); }
    QString Show() const { return childText("show"); }

    void setStatus(const QString& text) { setChildText("status", text); }
    void setShow(const QString& word) { setChildText("show", word); }

    void SetSubscribe() { setAttribute("type", QStringLiteral("subscribe")); }
    void SetSubscribed() { setAttribute("type", QStringLiteral("subscribed")); }
    void SetUnsubscribe() { setAttribute("type", QStringLiteral("unsubscribe")); }
    void SetUnsubscribed() { setAttribute("type", QStringLiteral("unsubscribed")); }
    void SetUnavailable() { setAttribute("type", QStringLiteral("unavailable")); }
    void SetAvailable() { setAttribute("type", QString()); }
    void SetProbe() { setAttribute("type", QStringLiteral("probe")); }

    bool IsSubscribe() const { return isType("subscribe"); }
    bool IsSubscribed() const { return isType("subscribed"); }
    bool IsUnsubscribe() const { return isType("unsubscribe"); }
    bool IsUnsubscribed() const { return isType("unsubscribed"); }
    bool IsUnavailable() const { return isType("unavailable"); }
    bool IsAvailable() const { return isType(""); }

private:
    bool isType(std::string_view type) const { return root_.attribute("type").value() == type; }
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
