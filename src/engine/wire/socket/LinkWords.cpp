#include "engine/wire/socket/LinkWords.h"

#include "engine/Xml.h"

#include <QCoreApplication>

namespace linkWords
{
namespace
{

struct Words {
    Q_DECLARE_TR_FUNCTIONS(Connection)
};

// Longest text of a server's own that is shown.
constexpr qsizetype mostText = 300;

QString place(const Candidate& candidate)
{
    return Words::tr("%1, port %2").arg(candidate.host).arg(candidate.port);
}

} // namespace

QString transport(const Candidate& candidate, Transport::Failure failure, const QString& systemText)
{
    switch (failure) {
    case Transport::Failure::HostNotFound:
        return Words::tr("There is no server named \"%1\".").arg(candidate.host);
    case Transport::Failure::Refused:
        return Words::tr("No Jabber server runs at %1: the connection was refused.").arg(place(candidate));
    case Transport::Failure::Tls:
        return Words::tr("No secure connection to %1 could be made: %2").arg(place(candidate), systemText);
    case Transport::Failure::None:
    case Transport::Failure::ClosedByPeer:
        return Words::tr("The server at %1 closed the connection.").arg(place(candidate));
    case Transport::Failure::Network:
        break;
    }
    return Words::tr("The server at %1 cannot be reached: %2").arg(place(candidate), systemText);
}

QString noAnswer(const Candidate& candidate)
{
    return Words::tr("The server at %1 does not answer: the attempt timed out.").arg(place(candidate));
}

QString silent(const Candidate& candidate)
{
    return Words::tr("The server at %1 took the connection but says nothing: the attempt timed out.")
        .arg(place(candidate));
}

QString notJabber(const Candidate& candidate)
{
    return Words::tr("What runs at %1 is not a Jabber server.").arg(place(candidate));
}

QString noService(const QString& domain)
{
    return Words::tr("%1 offers no Jabber service.").arg(domain);
}

QString noTls(const QString& domain)
{
    return Words::tr("%1 offers no secure connection.").arg(domain);
}

QString distrusted(const QString& domain)
{
    return Words::tr("The certificate of %1 was not accepted.").arg(domain);
}

QString stalled(const QString& domain)
{
    return Words::tr("%1 stopped answering while you were signed in: the attempt timed out.").arg(domain);
}

QString dead(const QString& domain)
{
    return Words::tr("%1 gives no sign of life any more.").arg(domain);
}

QString sessionGone(const QString& domain)
{
    return Words::tr("%1 does not know the session any more.").arg(domain);
}

QString broken(const QString& domain)
{
    return Words::tr("The connection was closed, because %1 sent something that is not allowed.").arg(domain);
}

QString streamError(const QString& domain, pugi::xml_node error)
{
    if (error.child("host-unknown"))
        return Words::tr("The server does not serve the domain %1.").arg(domain);
    if (error.child("conflict"))
        return Words::tr("The account was signed in from another place under the same resource.");
    if (error.child("system-shutdown"))
        return Words::tr("The server %1 is shutting down.").arg(domain);
    QString text = xml::text(error.child("text"));
    if (text.isEmpty())
        text = xml::text(error);
    if (text.isEmpty())
        text = xml::fromUtf8(error.first_child().name());
    if (text.isEmpty())
        return Words::tr("The server %1 closed the connection.").arg(domain);
    return Words::tr("The server %1 closed the connection: %2").arg(domain, text.left(mostText));
}

} // namespace linkWords
