#pragma once

#include <QString>

// Jabber addresses. The world keeps its own host name as a mark: each Connection writes the name that its
// client gave in the stream header, so that the server answers to whatever name it is reached by.
namespace sandbox
{

// A noncharacter, which no client's text can hold: Stanza replaces it on the way in.
inline const QString Host(QChar(0xFDD0));

namespace address
{

inline QString bare(const QString& jid)
{
    const auto slash = jid.indexOf(u'/');
    return slash < 0 ? jid : jid.left(slash);
}

inline QString resource(const QString& jid)
{
    const auto slash = jid.indexOf(u'/');
    return slash < 0 ? QString() : jid.mid(slash + 1);
}

// The part before "@"; empty for the address of a server or service.
inline QString node(const QString& jid)
{
    const auto at = bare(jid).indexOf(u'@');
    return at < 0 ? QString() : jid.left(at);
}

inline QString domain(const QString& jid)
{
    const QString whole = bare(jid);
    return whole.mid(whole.indexOf(u'@') + 1);
}

// The person `node` of this server.
inline QString local(const QString& node)
{
    return node + u'@' + Host;
}

// The service `name` of this server.
inline QString service(const QString& name)
{
    return name + u'.' + Host;
}

// `jid` with the domain `from`, or one below it, exchanged for `to`; unchanged when it is elsewhere.
QString rehosted(const QString& jid, const QString& from, const QString& to);

} // namespace address
} // namespace sandbox
