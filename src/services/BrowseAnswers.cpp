#include "services/BrowseAnswers.h"

#include "engine/Stanza.h"
#include "engine/Xml.h"

#include <vector>

namespace browseanswers
{
namespace
{

using Elements = std::vector<pugi::xml_node>;

Elements elements(const Stanza& answer, const char* name)
{
    Elements found;
    for (const auto match :
         answer.root().select_nodes((std::string(".//*[local-name()='") + name + "']").c_str()))
        found.push_back(match.node());
    return found;
}

Row rowOf(pugi::xml_node element)
{
    const QString jid = xml::attribute(element, "jid");
    const QString name = xml::attribute(element, "name");
    return {jid, name.isEmpty() ? jid : name};
}

// A server that names nothing but the node of its administration tells its services elsewhere.
bool tellsNothing(const Elements& items)
{
    return items.empty() || (items.size() == 1 && xml::serialised(items.front()).contains(u"/admin"));
}

} // namespace

QStringList roomServices(const Stanza& answer, const QString& kind)
{
    QStringList services;
    for (const auto element : elements(answer, "conference")) {
        const QString jid = xml::attribute(element, "jid");
        if (xml::attribute(element, "type") == kind && !jid.isEmpty())
            services += jid;
    }
    return services;
}

QList<Row> rooms(const Stanza& answer)
{
    QList<Row> rows;
    for (const auto element : elements(answer, "conference")) {
        const Row row = rowOf(element);
        if (!row.jid.isEmpty())
            rows += row;
    }
    return rows;
}

Directories directories(const Stanza& answer, const QString& server)
{
    Directories found;
    const Elements items = elements(answer, "item");
    const bool shown = tellsNothing(items);
    for (const auto element : shown ? elements(answer, "service") : items) {
        const Row row = rowOf(element);
        if (row.jid.isEmpty() || row.jid == server || xml::attribute(element, "type") != u"jud")
            continue;
        if (shown)
            found.rows += row;
        else
            found.toBrowse += row.jid;
    }
    return found;
}

QList<Row> directoryServices(const Stanza& answer, const QString& server)
{
    QList<Row> rows;
    for (const auto element : elements(answer, "service")) {
        const QString name = xml::attribute(element, "name");
        if (!element.attribute("jid"))
            rows += Row{answer.From(), name.isEmpty() ? answer.From() : name};
        else if (const Row row = rowOf(element);
                 !row.jid.isEmpty() && row.jid != server && name.toLower() != u"brelo server")
            rows += row;
    }
    return rows;
}

} // namespace browseanswers
