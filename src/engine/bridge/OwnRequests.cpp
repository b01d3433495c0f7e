#include "engine/bridge/OwnRequests.h"

#include "engine/Xml.h"

#include <QLatin1String>

#include <string_view>

namespace
{

constexpr QLatin1String idPrefix("brelo-q");

}

void OwnRequests::ask(const QString& to, const QString& query, Answer answer, BridgeOutput& out)
{
    const auto id = idPrefix + QString::number(++nextId_);
    open_.insert(id, {std::move(answer), {}});
    out.wire << QStringLiteral("<iq type=\"get\" id=\"%1\" to=\"%2\">%3</iq>")
                    .arg(id, xml::escaped(to), query)
                    .toUtf8();
}

bool OwnRequests::take(const Stanza& iq, BridgeOutput& out)
{
    const std::string_view type = iq.root().attribute("type").value();
    const auto id = xml::attribute(iq.root(), "id");
    if ((type != "result" && type != "error") || !id.startsWith(idPrefix))
        return false;
    const auto request = open_.find(id);
    if (request == open_.end())
        return true;
    const auto answer = std::move(request->answer);
    open_.erase(request);
    answer(type == "result" ? iq.root() : pugi::xml_node(), out);
    return true;
}

void OwnRequests::tick(qint64 nowMs, BridgeOutput& out)
{
    QList<Answer> overdue;
    for (auto request = open_.begin(); request != open_.end();) {
        if (request->deadline.hasPassed(nowMs)) {
            overdue << std::move(request->answer);
            request = open_.erase(request);
        } else {
            ++request;
        }
    }
    for (const auto& answer : overdue)
        answer({}, out);
}
