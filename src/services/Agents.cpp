#include "services/Agents.h"

#include "contacts/Client.h"
#include "engine/Xml.h"

Agents::Agents(Client& client, ContactList list) : client_(client), list_(std::move(list)) {}

void Agents::OnIQ(PlugInContext& context)
{
    if (!list_.isInitiated())
        list_.initRoster();
    for (const auto& match : context.Stanza().IqFields().Document().select_nodes("//agent")) {
        const auto agent = match.node();
        const QString name =
            xml::text(agent.find_child([](auto n) { return n.type() == pugi::node_element; }));
        // Kept: the word anywhere in the agent's text makes it a gateway.
        addAgent(xml::attribute(agent, "jid"), name, xml::serialised(agent).contains(u"transport"));
    }
    const QString server = client_.Gateway().Server();
    list_.addGateway(server, server.toUpper());
}

void Agents::addAgent(const QString& jid, const QString& name, bool isTransport)
{
    client_.MyAgents.AddItem(jid, name, false, false);
    client_.MyRoster.AddItem(jid, name, false, QStringLiteral("4"), {}, true, {}, {}, {}, {});
    if (!isTransport)
        return;
    client_.MyAgents.record(jid)->IsTransport = true;
    list_.addGateway(jid, name);
}
