#include "engine/wire/auth/SaslNegotiation.h"

#include "engine/Xml.h"

#include <optional>
#include <string_view>

namespace
{

constexpr const char* saslNamespace = "urn:ietf:params:xml:ns:xmpp-sasl";

// RFC 6120, 6.4.2: "=" stands for data that is there but empty.
std::optional<QByteArray> decoded(const QByteArray& base64)
{
    const auto text = base64.trimmed();
    if (text.isEmpty() || text == "=")
        return QByteArray();
    auto result = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    return result ? std::optional(std::move(*result)) : std::nullopt;
}

QString encoded(const QByteArray& data)
{
    return QString::fromLatin1(data.toBase64());
}

std::shared_ptr<Stanza> authError(const QString& domain, const QString& text)
{
    return Stanza::fromXml(
        QStringLiteral("<iq type=\"error\" id=\"brelo-auth\" from=\"%1\">"
                       "<query xmlns=\"jabber:iq:auth\"/><error code=\"401\">%2</error></iq>")
            .arg(xml::escaped(domain), xml::escaped(text)));
}

// Conditions that speak of the account rather than of the server or of the exchange.
bool refusesAccount(std::string_view condition)
{
    return condition == "not-authorized" || condition == "account-disabled" ||
           condition == "credentials-expired" || condition == "invalid-authzid";
}

bool refusesMechanism(std::string_view condition)
{
    return condition == "invalid-mechanism" || condition == "mechanism-too-weak" ||
           condition == "encryption-required";
}

} // namespace

QStringList SaslNegotiation::offered(pugi::xml_node features)
{
    QStringList names;
    const auto mechanisms = features.child("mechanisms");
    if (xml::xmlns(mechanisms) != saslNamespace)
        return names;
    for (const auto mechanism : mechanisms.children("mechanism"))
        names << xml::text(mechanism).trimmed();
    return names;
}

SaslNegotiation::SaslNegotiation(AuthRequest request, QStringList mechanisms)
    : request_(std::move(request)), mechanisms_(std::move(mechanisms))
{
    start(SaslClient::choose(mechanisms_, request_));
}

void SaslNegotiation::start(const QString& mechanism)
{
    mechanisms_.removeAll(mechanism);
    proveBy(SaslClient::proofOf(mechanism));
    client_ = std::make_unique<SaslClient>(mechanism, request_.user, request_.password);
    const auto initial = client_->step({});
    if (!initial)
        return fail(tr("The user name or the password holds characters that cannot be used to sign in."));
    write(QStringLiteral("<auth xmlns=\"%1\" mechanism=\"%2\">%3</auth>")
              .arg(QLatin1String(saslNamespace), mechanism, encoded(*initial)));
}

void SaslNegotiation::feed(const Stanza& element)
{
    if (outcome() != Outcome::Working || xml::xmlns(element.root()) != saslNamespace)
        return;
    const std::string_view name = element.root().name();
    if (name == "challenge")
        challenged(xml::text(element.root()).toLatin1());
    else if (name == "success")
        succeeded(xml::text(element.root()).toLatin1());
    else if (name == "failure")
        failed(element.root());
}

void SaslNegotiation::challenged(const QByteArray& base64)
{
    const auto challenge = decoded(base64);
    const auto answer = challenge ? client_->step(*challenge) : std::nullopt;
    if (!answer && client_->isTooWeak())
        return giveUp(tr("The server keeps the password too weakly guarded to be answered: it may not be the "
                         "one it seems to be."));
    if (!answer)
        return giveUp(
            tr("The server did not sign in properly on its side: it may not be the one it seems to be."));
    write(QStringLiteral("<response xmlns=\"%1\">%2</response>")
              .arg(QLatin1String(saslNamespace), encoded(*answer)));
}

void SaslNegotiation::giveUp(const QString& sentence)
{
    write(QStringLiteral("<abort xmlns=\"%1\"/>").arg(QLatin1String(saslNamespace)));
    fail(sentence);
}

void SaslNegotiation::succeeded(const QByteArray& base64)
{
    // The server's last word may come with <success/> or in a challenge before it; it has to have come.
    if (!client_->isComplete()) {
        const auto last = decoded(base64);
        if (!last || !client_->step(*last) || !client_->isComplete())
            return fail(
                tr("The server did not prove that it knows the password: it may not be the one it seems "
                   "to be."));
    }
    pass();
}

void SaslNegotiation::failed(pugi::xml_node failure)
{
    std::string_view condition;
    for (const auto child : failure.children()) {
        if (child.type() == pugi::node_element && std::string_view(child.name()) != "text")
            condition = child.name();
    }
    const auto next = refusesMechanism(condition) ? SaslClient::choose(mechanisms_, request_) : QString();
    if (!next.isEmpty())
        return start(next);
    const auto serverText = xml::text(failure.child("text")).trimmed();
    if (refusesAccount(condition)) {
        const auto sentence =
            serverText.isEmpty() ? tr("The user name or the password is not right.") : serverText;
        return refuse(sentence, authError(request_.domain, sentence));
    }
    const auto why =
        serverText.isEmpty() ? QString::fromUtf8(condition.data(), qsizetype(condition.size())) : serverText;
    fail(tr("The server could not sign you in: %1").arg(why));
}
