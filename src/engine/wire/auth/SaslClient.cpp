#include "engine/wire/auth/SaslClient.h"

#include <gsasl.h>

namespace
{

// A server may ask for so much hashing that the window would freeze; nobody's honest setting is near this.
constexpr qlonglong mostIterations = 1'000'000;

bool asksTooMuch(const QByteArray& challenge)
{
    for (const auto& part : challenge.split(',')) {
        if (!part.startsWith("i="))
            continue;
        bool isNumber = false;
        const auto count = part.mid(2).toLongLong(&isNumber);
        return !isNumber || count < 1 || count > mostIterations;
    }
    return false;
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
    const QString strong = choose(offered, false);
    if (!strong.isEmpty())
        return strong;
    const QString any = choose(offered, true);
    return any.isEmpty() || !request.mayShowPassword() ? QString() : any;
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
    if (!session_ || complete_ || asksTooMuch(challenge))
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
