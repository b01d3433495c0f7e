#include "engine/wire/socket/MarkupGuard.h"

#include <cstring>
#include <utility>

namespace
{

constexpr StreamFault restricted{"restricted-xml", "a comment, a document type or a processing instruction"};
constexpr StreamFault notXml{"not-well-formed", "the stream does not begin as XML in UTF-8"};
constexpr StreamFault notUtf8{"not-well-formed", "bytes that are not UTF-8"};
constexpr StreamFault tooManyAttributes{"policy-violation", "too many attributes in one element"};

} // namespace

MarkupGuard::Finding MarkupGuard::check(QByteArrayView bytes)
{
    const auto valid = utf8_.validPrefix(bytes);
    const auto finding = checkMarkup(bytes.first(valid));
    if (finding.fault || valid == bytes.size())
        return finding;
    return {valid, notUtf8};
}

MarkupGuard::Finding MarkupGuard::checkMarkup(QByteArrayView bytes)
{
    const char* at = bytes.begin();
    const char* const end = bytes.end();
    while (at != end) {
        if (in_ == In::Text || in_ == In::Quote) {
            // The long stretches: nothing matters before the next tag or the closing quote.
            const char wanted = in_ == In::Text ? '<' : quote_;
            at = static_cast<const char*>(std::memchr(at, wanted, static_cast<std::size_t>(end - at)));
            if (!at)
                break;
            in_ = in_ == In::Text ? In::Opened : In::Tag;
        } else if (const auto fault = step(*at)) {
            return {at - bytes.begin(), fault};
        }
        ++at;
    }
    return {bytes.size(), {}};
}

StreamFault MarkupGuard::step(char c)
{
    switch (in_) {
    case In::Start:
        if (c != '<' && c != ' ' && c != '\n' && c != '\r' && c != '\t')
            return notXml;
        atStart_ = c == '<';
        in_ = c == '<' ? In::Opened : In::Text;
        return {};
    case In::Opened:
        return opened(c);
    case In::DeclarationName:
        return literal(c, "xml ", In::Declaration);
    case In::Declaration:
        if (c == '>')
            in_ = In::Text;
        return {};
    case In::Bang:
        return literal(c, "[CDATA[", In::CData);
    case In::CData:
        cdata(c);
        return {};
    default:
        return tag(c);
    }
}

StreamFault MarkupGuard::opened(char c)
{
    const bool declarationAllowed = std::exchange(atStart_, false);
    matched_ = 0;
    attributes_ = 0;
    if (c == '\0')
        return notXml; // UTF-16
    if (c == '?' && !declarationAllowed)
        return restricted;
    in_ = c == '?' ? In::DeclarationName : c == '!' ? In::Bang : c == '>' ? In::Text : In::Tag;
    return {};
}

StreamFault MarkupGuard::tag(char c)
{
    if (c == '>') {
        in_ = In::Text;
    } else if (c == '"' || c == '\'') {
        quote_ = c;
        in_ = In::Quote;
    } else if (c == '=' && ++attributes_ > maxAttributes) {
        return tooManyAttributes;
    }
    return {};
}

StreamFault MarkupGuard::literal(char c, const char* expected, In next)
{
    if (c != expected[matched_])
        return restricted;
    if (!expected[++matched_]) {
        in_ = next;
        matched_ = 0;
    }
    return {};
}

void MarkupGuard::cdata(char c)
{
    if (c == '>' && matched_ >= 2)
        in_ = In::Text;
    matched_ = c == ']' ? matched_ + 1 : 0;
}
