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

// Whether `jid` is made as an address must be (RFC 7622): a host, with a user before it and a resource behind
// it where they are told.
inline bool isValid(const QString& jid)
{
    const QString address = bare(jid);
    const auto at = address.indexOf(u'@');
    const QString host = address.mid(at + 1);
    const auto holds = [](const QString& text, QStringView forbidden) {
        return std::any_of(text.begin(), text.end(), [forbidden](QChar c) {
            return c.isSpace() || c.unicode() < 0x20 || c.unicode() == 0x7F || forbidden.contains(c);
        });
    };
    constexpr qsizetype longest = 1023; // of each part
    return at != 0 && at <= longest && !holds(address.left(qMax<qsizetype>(at, 0)), u"\"&':<>") &&
           !host.isEmpty() && host.size() <= longest && !holds(host, u"@\"&'<>") && !host.startsWith(u'.') &&
           jid.size() - address.size() <= longest + 1 && !jid.endsWith(u'/');
}

} // namespace jid
