#include "engine/bridge/Exchange.h"

#include "engine/bridge/StanzaText.h"

#include <QLatin1String>

#include <algorithm>

namespace
{

constexpr QLatin1String idPrefix("brelo-q");
// Long enough for an answer that is late, short enough that one that got lost doesn't pass its place on to
// the answers of all later requests of the same id.
constexpr qint64 latenessMs = 60'000;
constexpr int timeOutCode = 504;

auto numbered(quint64 number)
{
    return [number](const auto& request) { return request.number == number; };
}

} // namespace

void Exchange::ask(const Request& request, Step answered)
{
    const auto id = request.id.isEmpty() ? idPrefix + QString::number(count_ + 1) : request.id;
    const auto to =
        request.to.isEmpty() ? QString() : QStringLiteral(" to=\"%1\"").arg(xml::escaped(request.to));
    const auto text = QStringLiteral("<iq type=\"%1\" id=\"%2\"%3>%4</iq>")
                          .arg(QLatin1String(request.type), xml::escaped(id), to, request.payload);
    send(text.toUtf8(), {id, home_.key(request.to)}, std::move(answered), request.deadlineMs);
}

void Exchange::forward(const QByteArray& text, pugi::xml_node iq, Step answered, Deadline deadlineMs)
{
    send(text, home_.requestKey(iq, "to"), std::move(answered), deadlineMs);
}

void Exchange::send(const QByteArray& text, const RequestKey& key, Step answered, Deadline deadlineMs)
{
    const auto number = ++count_;
    open_[key].push_back({number, std::move(answered)});
    if (deadlineMs)
        timers_.after(*deadlineMs, [this, key, number] { giveUp(key, number); });
    out_.wire << text;
}

bool Exchange::take(const std::shared_ptr<Stanza>& iq)
{
    const auto root = iq->root();
    const auto key = home_.requestKey(root, "from");
    const auto requests = open_.find(key);
    // The client hears of no request that it didn't make.
    if (requests == open_.end())
        return key.first.startsWith(idPrefix);
    const auto answered = std::move(requests->front().answered);
    requests->pop_front();
    if (requests->empty())
        open_.erase(requests);
    if (answered)
        answered({iq, stanza::isType(root, "result") ? StanzaError{0, {}} : StanzaError::of(root)});
    return true;
}

// The request keeps its place, so that a late answer isn't taken for the next one's.
void Exchange::giveUp(const RequestKey& key, quint64 number)
{
    const auto requests = open_.find(key);
    if (requests == open_.end())
        return;
    const auto request = std::find_if(requests->begin(), requests->end(), numbered(number));
    if (request == requests->end())
        return;
    const auto answered = std::exchange(request->answered, nullptr);
    timers_.after(latenessMs, [this, key, number] { forget(key, number); });
    answered({nullptr, {timeOutCode, {}}});
}

void Exchange::forget(const RequestKey& key, quint64 number)
{
    const auto requests = open_.find(key);
    if (requests == open_.end())
        return;
    std::erase_if(*requests, numbered(number));
    if (requests->empty())
        open_.erase(requests);
}
