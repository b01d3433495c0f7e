#pragma once

#include "engine/Xml.h"
#include "engine/wire/auth/StreamAuth.h"

#include <QStringList>

// <mechanisms/> with these names.
inline QString mechanisms(const QStringList& names)
{
    QString inner;
    for (const auto& name : names)
        inner += "<mechanism>" + name + "</mechanism>";
    return "<mechanisms xmlns=\"urn:ietf:params:xml:ns:xmpp-sasl\">" + inner + "</mechanisms>";
}

// The server's side of a sign-in: it reads what StreamAuth wrote, and feeds answers as text.
class AuthPeer
{
public:
    // By default of juliet of capulet.example with the password "r0m30", over an encrypted stream.
    explicit AuthPeer(AuthRequest request = {"juliet", "r0m30", "capulet.example", "balcony", true, false})
        : auth(std::move(request))
    {
    }
    // The same, with a stream open that offers these mechanisms.
    explicit AuthPeer(const QStringList& offered) : AuthPeer() { open(mechanisms(offered)); }

    // Opens a stream with these children of <features/>; a null text opens one without features.
    void open(const QString& features, const QString& streamId = {})
    {
        const auto whole = "<features xmlns='http://etherx.jabber.org/streams'>" + features + "</features>";
        features_ = features.isNull() ? std::make_unique<pugi::xml_document>() : xml::parsed(whole);
        auth.streamOpened(features_->document_element(), streamId);
    }
    void feed(const QString& xml) { auth.feed(*Stanza::fromXml(xml)); }
    // What was written since the last call, parsed; a null node for nothing. Lives until the next call.
    pugi::xml_node written()
    {
        written_ = xml::parsed(writtenText());
        return written_ ? written_->document_element() : pugi::xml_node();
    }
    QString writtenText() { return QString::fromUtf8(auth.takeOutput().join()); }

    StreamAuth auth;

private:
    std::unique_ptr<pugi::xml_document> features_;
    std::unique_ptr<pugi::xml_document> written_;
};
