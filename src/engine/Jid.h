#pragma once

#include <QString>

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

} // namespace jid
