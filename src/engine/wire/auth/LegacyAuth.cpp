#include "engine/wire/auth/LegacyAuth.h"

#include "engine/StanzaError.h"
#include "engine/Xml.h"

#include <QCryptographicHash>

#include <string_view>

namespace
{

constexpr const char* authNamespace = "jabber:iq:auth";
constexpr const char* getId = "brelo-auth1";
constexpr const char* setId = "brelo-auth2";

QString digest(const QString& streamId, const QString& password)
{
    const auto hash = QCryptographicHash::hash((streamId + password).toUtf8(), QCryptographicHash::Sha1);
    return QString::fromLatin1(hash.toHex());
}

} // namespace

bool LegacyAuth::isOffered(pugi::xml_node features)
{
    const auto auth = features.child("auth");
    return auth && xml::xmlns(auth) == "http://jabber.org/features/iq-auth";
}

LegacyAuth::LegacyAuth(AuthRequest request, QString streamId)
    : request_(std::move(request)), streamId_(std::move(streamId))
{
    // The dialect knows no session without a resource.
    if (request_.resource.isEmpty())
        request_.resource = QStringLiteral("BreloIM");
    write(QStringLiteral("<iq type=\"get\" id=\"%1\" to=\"%2\"><query xmlns=\"jabber:iq:auth\">"
                         "<username>%3</username></query></iq>")
              .arg(QLatin1String(getId), xml::escaped(request_.domain), xml::escaped(request_.user)));
}

QString LegacyAuth::ownJid() const
{
    return request_.user + u'@' + request_.domain + u'/' + request_.resource;
}

void LegacyAuth::feed(const Stanza& element)
{
    if (outcome() != Outcome::Working || element.kind() != Stanza::Kind::Iq)
        return;
    const auto iq = element.root();
    if (std::string_view(iq.attribute("id").value()) != (sent_ ? setId : getId))
        return;
    const std::string_view type = iq.attribute("type").value();
    if (type == "error")
        refused(iq);
    else if (type == "result" && sent_)
        pass(ownJid());
    else if (type == "result")
        send(iq.child("query"));
}

void LegacyAuth::send(pugi::xml_node offeredFields)
{
    QString secret;
    if (offeredFields.child("digest") && !streamId_.isEmpty())
        secret = QStringLiteral("<digest>%1</digest>").arg(digest(streamId_, request_.password));
    else if (!offeredFields.child("password"))
        return fail(tr("The server offers no way to sign in that this program knows."));
    proveBy(secret.isEmpty() ? Proof::Plain : Proof::Digest);
    if (!request_.mayUse(proof()))
        return fail(tr("The server takes the password only in clear, and the connection is not encrypted."));
    if (secret.isEmpty())
        secret = QStringLiteral("<password>%1</password>").arg(xml::escaped(request_.password));
    sent_ = true;
    write(QStringLiteral("<iq type=\"set\" id=\"%1\" to=\"%2\"><query xmlns=\"jabber:iq:auth\">"
                         "<username>%3</username>%4<resource>%5</resource></query></iq>")
              .arg(QLatin1String(setId), xml::escaped(request_.domain), xml::escaped(request_.user), secret,
                   xml::escaped(request_.resource)));
}

// The client knows the refusal by its query, which a server may leave out of its answer.
void LegacyAuth::refused(pugi::xml_node iq)
{
    const auto error = StanzaError::of(iq);
    if (error.isUnsupported())
        return fail(tr("The server offers no way to sign in that this program knows."));
    auto document = std::make_unique<pugi::xml_document>();
    auto copy = document->append_copy(iq);
    if (xml::xmlns(copy.child("query")) != authNamespace)
        copy.prepend_child("query").append_attribute("xmlns") = authNamespace;
    refuse(error.sentence(), std::make_shared<Stanza>(std::move(document)));
}
