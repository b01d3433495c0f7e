#include "engine/bridge/PresenceRoutes.h"

#include "engine/Jid.h"

#include <string_view>

namespace
{

constexpr std::string_view space = " \t\r\n";

// The last name in `text`, the start of a tag up to a value's quote.
std::string_view attributeName(std::string_view text)
{
    const auto end = text.find_last_not_of(" \t\r\n=");
    const auto start = text.find_last_of(space, end);
    return start == text.npos ? std::string_view() : text.substr(start + 1, end - start);
}

// The `to` of a start tag. References stay as they stand: a bare JID holds no character that needs one.
QString addressee(std::string_view tag)
{
    for (std::size_t at = 0;;) {
        const auto quote = tag.find_first_of("\"'>", at);
        if (quote == tag.npos || tag[quote] == '>')
            return {};
        const auto end = tag.find(tag[quote], quote + 1);
        if (end == tag.npos)
            return {};
        if (attributeName(tag.substr(at, quote - at)) == "to")
            return QString::fromUtf8(tag.data() + quote + 1, static_cast<qsizetype>(end - quote - 1));
        at = end + 1;
    }
}

} // namespace

Translator* PresenceRoutes::to(const QByteArray& presence) const
{
    if (routes_.isEmpty())
        return nullptr;
    const auto to = addressee({presence.constData(), static_cast<std::size_t>(presence.size())});
    return routes_.value(jid::bare(to).toLower());
}

Translator* PresenceRoutes::from(const Stanza& presence) const
{
    return routes_.isEmpty() ? nullptr : routes_.value(jid::bare(presence.From()).toLower());
}
