#include "services/SearchAnswers.h"

#include "engine/Stanza.h"
#include "engine/Xml.h"

#include <QHash>

#include <algorithm>
#include <iterator>
#include <span>
#include <vector>

namespace searchanswers
{
namespace
{

constexpr qsizetype mostFields = 200;
constexpr qsizetype mostColumns = 100;
constexpr qsizetype mostRows = 20'000;

bool isElement(pugi::xml_node node)
{
    return node.type() == pugi::node_element;
}

// What stands beside them in another namespace is a form for programs that know it.
bool isOfSearch(pugi::xml_node node)
{
    return isElement(node) && xml::xmlns(node) == "jabber:iq:search";
}

std::vector<pugi::xml_node> items(const Stanza& answer)
{
    std::vector<pugi::xml_node> found;
    for (const auto query : answer.root().children()) {
        for (const auto item : query.children("item")) {
            if (isOfSearch(item))
                found.push_back(item);
        }
    }
    return found;
}

qsizetype width(pugi::xml_node item)
{
    const auto children = item.children();
    return std::count_if(children.begin(), children.end(), isElement);
}

pugi::xml_attribute address(pugi::xml_node item)
{
    return item.find_attribute(
        [](pugi::xml_attribute a) { return !std::string_view(a.name()).starts_with("xmlns"); });
}

// The places of a column's title; a title may stand twice.
using Places = QHash<QString, QList<qsizetype>>;

QStringList rowOf(pugi::xml_node item, const Places& places)
{
    QStringList row(1, xml::fromUtf8(address(item).value()));
    for (const auto child : item.children()) {
        const auto at = isElement(child) ? places.constFind(xml::fromUtf8(child.name())) : places.cend();
        // The first of a name counts, in all of its places.
        if (at == places.cend() || !row.value(at->first()).isNull())
            continue;
        row.resize(qMax(row.size(), at->last() + 1));
        for (const auto place : *at)
            row[place] = QLatin1String("") + xml::text(child);
    }
    return row;
}

} // namespace

Form form(const Stanza& answer)
{
    Form form;
    for (const auto query : answer.root().children()) {
        for (const auto child : query.children()) {
            if (!isOfSearch(child) || !isOfSearch(query))
                continue;
            const QString name = xml::fromUtf8(child.name());
            if (name.compare(u"instructions", Qt::CaseInsensitive) == 0)
                form.instructions = xml::text(child);
            else if (form.fields.size() < mostFields)
                form.fields += {name, xml::text(child)};
            else
                ++form.leftOut;
        }
    }
    return form;
}

Results results(const Stanza& answer)
{
    Results results;
    const auto found = items(answer);
    if (found.empty())
        return results;
    std::vector<qsizetype> widths;
    widths.reserve(found.size());
    std::ranges::transform(found, std::back_inserter(widths), width);
    const auto widest = found[std::size_t(std::ranges::max_element(widths) - widths.begin())];
    results.columns += xml::fromUtf8(address(widest).name());
    Places places;
    for (const auto child : widest.children()) {
        if (!isElement(child) || results.columns.size() == mostColumns)
            continue;
        const QString title = xml::fromUtf8(child.name());
        places[title] += results.columns.size();
        results.columns += title;
    }
    const auto shown = qMin(qsizetype(found.size()), mostRows);
    results.rows.reserve(shown);
    for (const auto item : std::span(found).first(std::size_t(shown)))
        results.rows += rowOf(item, places);
    results.leftOut = qsizetype(found.size()) - shown;
    return results;
}

} // namespace searchanswers
