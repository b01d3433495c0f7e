#include "engine/wire/socket/MarkupGuard.h"

#include <cstring>
#include <utility>

namespace
{

constexpr StreamFault restricted{"restricted-xml", "a comment, a document type or a processing instruction"};
constexpr StreamFault notXml{"not-well-formed", "the stream does not begin as XML in UTF-8"};
constexpr StreamFault notUtf8{"not-well-formed", "bytes that are not UTF-8"};
constexpr StreamFault tooManyAttributes{"policy-violation", "too many attributes in one element"};
constexpr StreamFault tooLong{"policy-violation", "a stanza is too long"};

} // namespace

// What of a piece goes on, while it is looked through.
struct MarkupGuard::Sorting {
    // The stanza that began at `at` is left out from there on.
    void skipFrom(qint64 at)
    {
        if (at < 0)
            finding.forgets = true;
        else
            takeUntil(at);
        isWhole = false;
    }
    void goOnAt(qsizetype at)
    {
        ++finding.skipped;
        from = at;
        isWhole = false;
    }
    void takeUntil(qsizetype at) { finding.clean.append(bytes.constData() + from, at - from); }

    const QByteArray& bytes;
    Finding finding = {};
    qsizetype from = 0;
    bool isWhole = true; // nothing was left out
};

MarkupGuard::Finding MarkupGuard::check(const QByteArray& bytes)
{
    const auto valid = utf8_.validPrefix(bytes);
    auto finding = sorted(bytes, valid);
    if (!finding.fault && valid < bytes.size())
        finding.fault = notUtf8;
    return finding;
}

MarkupGuard::Finding MarkupGuard::sorted(const QByteArray& bytes, qsizetype size)
{
    Sorting sorting{bytes};
    sorting.isWhole = !skipping_;
    const char* const begin = bytes.constData();
    const char* const end = begin + size;
    const char* at = begin;
    while (at != end) {
        if (in_ == In::Text || in_ == In::Quote) {
            // The long stretches: nothing matters before the next tag or the closing quote.
            const char wanted = in_ == In::Text ? '<' : quote_;
            at = static_cast<const char*>(std::memchr(at, wanted, static_cast<std::size_t>(end - at)));
            if (!at)
                break;
            in_ = in_ == In::Text ? In::Opened : In::Tag;
            last_ = 0;
        } else {
            const int depth = depth_;
            const bool skipped = skipping_;
            sorting.finding.fault = step(*at);
            if (sorting.finding.fault)
                break;
            if (depth == 1 && depth_ == 2)
                stanzaAt_ = at - begin - 1; // at its "<"
            if (skipping_ && !skipped)
                sorting.skipFrom(stanzaAt_);
            // A tag that is left out may be a whole stanza's.
            if (skipping_ && depth_ == 1) {
                skipping_ = false;
                sorting.goOnAt(at - begin + 1);
            }
        }
        ++at;
    }
    const qsizetype seen = at ? at - begin : size;
    if (!skipping_ && isTooLong(seen)) {
        skipping_ = true;
        sorting.skipFrom(stanzaAt_);
    }
    if (skipping_ && seen - stanzaAt_ > maxSkipped)
        sorting.finding.fault = tooLong;
    stanzaAt_ -= seen;
    if (sorting.isWhole)
        sorting.finding.clean = seen == bytes.size() ? bytes : bytes.first(seen);
    else if (!skipping_)
        sorting.takeUntil(seen);
    return sorting.finding;
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
    closing_ = c == '/';
    last_ = c;
    if (in_ == In::Tag && !closing_)
        openElement();
    return {};
}

void MarkupGuard::openElement()
{
    elements_ = ++depth_ == 2 ? 1 : elements_ + 1;
    // The stream's own element isn't counted.
    skipping_ |= depth_ > maxDepth + 1 || (depth_ > 1 && elements_ > maxElements);
}

StreamFault MarkupGuard::tag(char c)
{
    if (c == '>') {
        in_ = In::Text;
        if (closing_ || last_ == '/')
            --depth_;
    } else if (c == '"' || c == '\'') {
        quote_ = c;
        in_ = In::Quote;
    } else if (c == '=' && ++attributes_ > maxAttributes) {
        if (depth_ < 2)
            return tooManyAttributes;
        skipping_ = true;
    }
    last_ = c;
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
