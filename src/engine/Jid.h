#pragma once

#include <QString>

#include <algorithm>

// JIDs are cut at the first "/" and compared exactly.
namespace jid
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

// Whether a person can have meant `text` as a JID (RFC 7622): a host, with a user before it and a resource
// behind it.
inline bool isAddress(const QString& text)
{
    const QString address = bare(text);
    const auto at = address.indexOf(u'@');
    const auto odd = [](QChar c) { return c.isSpace() || c < u' '; };
    return !address.isEmpty() && at != 0 && address.indexOf(u'@', at + 1) < 0 && !address.endsWith(u'@') &&
           std::none_of(address.begin(), address.end(), odd) && !text.endsWith(u'/');
}

} // namespace jid
