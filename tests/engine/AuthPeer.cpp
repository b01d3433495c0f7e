#include "AuthPeer.h"

#include "engine/Xml.h"

void AuthPeer::open(const QString& features, const QString& streamId)
{
    features_ = features.isNull() ? std::make_unique<pugi::xml_document>()
                                  : xml::parsed(R"(<features xmlns="http://etherx.jabber.org/streams">)" +
                                                features + "</features>");
    auth.streamOpened(features_->document_element(), streamId);
}

void AuthPeer::feed(const QString& xml)
{
    auth.feed(*Stanza::fromXml(xml));
}

QString AuthPeer::writtenText()
{
    QString text;
    for (const auto& part : auth.takeOutput())
        text += QString::fromUtf8(part);
    return text;
}

pugi::xml_node AuthPeer::written()
{
    written_ = xml::parsed(writtenText());
    return written_ ? written_->document_element() : pugi::xml_node();
}

QString mechanisms(const QStringList& names)
{
    QString inner;
    for (const auto& name : names)
        inner += "<mechanism>" + name + "</mechanism>";
    return "<mechanisms xmlns=\"urn:ietf:params:xml:ns:xmpp-sasl\">" + inner + "</mechanisms>";
}

SaslServer::SaslServer(const QString& mechanism, const QByteArray& user, const QByteArray& password)
    : user_(user), password_(password)
{
    gsasl_init(&context_);
    gsasl_callback_hook_set(context_, this);
    gsasl_callback_set(context_, [](Gsasl* gsasl, Gsasl_session* session, Gsasl_property property) -> int {
        return static_cast<SaslServer*>(gsasl_callback_hook_get(gsasl))->provide(session, property);
    });
    gsasl_server_start(context_, mechanism.toLatin1().constData(), &session_);
}

SaslServer::~SaslServer()
{
    gsasl_finish(session_);
    gsasl_done(context_);
}

int SaslServer::provide(Gsasl_session* asking, Gsasl_property property) const
{
    if (property == GSASL_PASSWORD && user_ == gsasl_property_fast(asking, GSASL_AUTHID))
        return gsasl_property_set(asking, GSASL_PASSWORD, password_.constData());
    if (property == GSASL_SCRAM_ITER)
        return gsasl_property_set(asking, GSASL_SCRAM_ITER, "4096");
    return GSASL_NO_CALLBACK;
}

QByteArray SaslServer::step(const QByteArray& base64)
{
    char* text = nullptr;
    const int code = gsasl_step64(session_, base64.constData(), &text);
    ok_ = code == GSASL_OK;
    const QByteArray answer(text);
    gsasl_free(text);
    return ok_ || code == GSASL_NEEDS_MORE ? answer : QByteArray();
}
