#include "AuthPeer.h"

#include "engine/Xml.h"

#include <gsasl.h>

AuthRequest AuthPeer::standardRequest()
{
    return {"juliet", "r0m30", "capulet.example", "balcony", true, false};
}

void AuthPeer::open(const QString& features, const QString& streamId)
{
    features_ =
        features.isNull()
            ? std::make_unique<pugi::xml_document>()
            : xml::parsed("<features xmlns=\"http://etherx.jabber.org/streams\">" + features + "</features>");
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

class SaslServer::Private
{
public:
    Private(const QByteArray& userName, const QByteArray& secret) : user(userName), password(secret)
    {
        gsasl_init(&context);
        gsasl_callback_hook_set(context, this);
        gsasl_callback_set(context, [](Gsasl* gsasl, Gsasl_session* session, Gsasl_property property) -> int {
            return static_cast<Private*>(gsasl_callback_hook_get(gsasl))->provide(session, property);
        });
    }

    ~Private()
    {
        gsasl_finish(session);
        gsasl_done(context);
    }

    int provide(Gsasl_session* asking, Gsasl_property property) const
    {
        if (property == GSASL_PASSWORD && user == gsasl_property_fast(asking, GSASL_AUTHID))
            return gsasl_property_set(asking, GSASL_PASSWORD, password.constData());
        if (property == GSASL_SCRAM_ITER)
            return gsasl_property_set(asking, GSASL_SCRAM_ITER, "4096");
        return GSASL_NO_CALLBACK;
    }

    QByteArray user;
    QByteArray password;
    Gsasl* context = nullptr;
    Gsasl_session* session = nullptr;
};

SaslServer::SaslServer(const QString& mechanism, const QByteArray& user, const QByteArray& password)
    : d_(std::make_unique<Private>(user, password))
{
    gsasl_server_start(d_->context, mechanism.toLatin1().constData(), &d_->session);
}

SaslServer::~SaslServer() = default;

QByteArray SaslServer::step(const QByteArray& base64)
{
    char* text = nullptr;
    const int code = gsasl_step64(d_->session, base64.constData(), &text);
    ok_ = code == GSASL_OK;
    const QByteArray answer(text);
    gsasl_free(text);
    return code == GSASL_OK || code == GSASL_NEEDS_MORE ? answer : QByteArray();
}
