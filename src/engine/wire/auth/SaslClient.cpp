#include "engine/wire/auth/SaslClient.h"

#include <gsasl.h>

namespace
{

// A server may ask for so much hashing that the window would freeze; nobody's honest setting is near this.
constexpr qlonglong mostIterations = 1'000'000;
// RFC 7677 wants 4096, which some old servers stay below; an answer over a few is as good as the password.
constexpr qlonglong fewestIterations = 1'000;

// The hashing that a SCRAM challenge asks for; 0 for what is no number, null where none is asked for.
std::optional<qlonglong> iterations(const QByteArray& challenge)
{
    for (const auto& part : challenge.split(',')) {
        if (part.startsWith("i="))
            return part.mid(2).toLongLong();
    }
    return std::nullopt;
}

} // namespace

void SaslClient::ContextDeleter::operator()(Gsasl* context) const
{
    gsasl_done(context);
}
void SaslClient::SessionDeleter::operator()(Gsasl_session* session) const
{
    gsasl_finish(session);
}

QString SaslClient::choose(const QStringList& offered, bool plainAllowed)
{
    for (const auto* name : {"SCRAM-SHA-256", "SCRAM-SHA-1", "PLAIN"}) {
        const auto mechanism = QString::fromLatin1(name);
        if (offered.contains(mechanism) && (plainAllowed || mechanism != QLatin1String("PLAIN")))
            return mechanism;
    }
    return {};
}

QString SaslClient::choose(const QStringList& offered, const AuthRequest& request)
{
    const QString best = choose(offered, true);
    return best.isEmpty() || !request.mayUse(proofOf(best)) ? QString() : best;
}

Proof SaslClient::proofOf(const QString& mechanism)
{
    return mechanism == QLatin1String("SCRAM-SHA-256") ? Proof::ScramSha256
           : mechanism == QLatin1String("SCRAM-SHA-1") ? Proof::ScramSha1
                                                       : Proof::Plain;
}

SaslClient::SaslClient(const QString& mechanism, const QString& user, const QString& password)
{
    Gsasl* context = nullptr;
    if (gsasl_init(&context) != GSASL_OK)
        return;
    context_.reset(context);
    Gsasl_session* session = nullptr;
    if (gsasl_client_start(context, mechanism.toLatin1().constData(), &session) != GSASL_OK)
        return;
    session_.reset(session);
    if (gsasl_property_set(session, GSASL_AUTHID, user.toUtf8().constData()) != GSASL_OK ||
        gsasl_property_set(session, GSASL_PASSWORD, password.toUtf8().constData()) != GSASL_OK)
        session_.reset();
}

SaslClient::~SaslClient() = default;

std::optional<QByteArray> SaslClient::step(const QByteArray& challenge)
{
    const auto asked = iterations(challenge);
    tooWeak_ = asked && *asked > 0 && *asked < fewestIterations;
    if (!session_ || complete_ || (asked && (*asked < fewestIterations || *asked > mostIterations)))
        return std::nullopt;
    char* text = nullptr;
    std::size_t size = 0;
    const int code = gsasl_step(session_.get(), challenge.constData(),
                                static_cast<std::size_t>(challenge.size()), &text, &size);
    const std::unique_ptr<char, decltype(&gsasl_free)> owner(text, gsasl_free);
    if (code != GSASL_OK && code != GSASL_NEEDS_MORE) {
        session_.reset();
        return std::nullopt;
    }
    complete_ = code == GSASL_OK;
    return QByteArray(text, static_cast<qsizetype>(size));
}
