#pragma once

#include <QString>

#include <algorithm>
#include <string_view>

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

// Whether no part of the address, in UTF-8, is longer than it may be (RFC 7622, 3.1).
inline bool fits(std::string_view jid)
{
    constexpr std::size_t longest = 1023; // bytes
    const auto bare = jid.substr(0, jid.find('/'));
    const auto host = bare.substr(bare.find('@') + 1);
    return host.size() <= longest && bare.size() - host.size() <= longest + 1 &&
           jid.size() - bare.size() <= longest + 1;
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
    return at != 0 && !holds(address.left(qMax<qsizetype>(at, 0)), u"\"&':<>") && !host.isEmpty() &&
           !holds(host, u"@\"&'<>") && !host.startsWith(u'.') && !jid.endsWith(u'/') &&
           fits(jid.toStdString());
}

} // namespace jid
