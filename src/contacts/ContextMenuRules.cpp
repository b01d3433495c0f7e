#include "contacts/ContextMenuRules.h"

#include "contacts/Client.h"
#include "contacts/ContactTree.h"
#include "contacts/FixedGroups.h"

namespace
{

ContextState allDisabledBut(std::initializer_list<ContextEntry> entries, bool enabled = true)
{
    ContextState state;
    state.fill(false);
    for (const auto entry : entries)
        state[static_cast<std::size_t>(entry)] = enabled;
    return state;
}

bool isContact(const TreeNode& node, const Client& client)
{
    const auto* item = client.MyRoster.record(node.key);
    return item && !item->IsGateway && node.children.empty() && node.text != u"ChatRoom" &&
           node.text != groups::waiting() && node.text != groups::hidden() &&
           node.key != groups::contacts() && node.key != groups::gateways() &&
           !client.MyGroups.Exists(node.text);
}

ContextState forContact()
{
    ContextState state;
    state.fill(true);
    state[static_cast<std::size_t>(ContextEntry::GateLogin)] = false;
    state[static_cast<std::size_t>(ContextEntry::LogoffGate)] = false;
    state[static_cast<std::size_t>(ContextEntry::AddFriend)] = std::nullopt;
    return state;
}

} // namespace

ContextState contextmenu::stateFor(const TreeNode* node, const Client& client)
{
    if (!node)
        return allDisabledBut({ContextEntry::AddFriend, ContextEntry::AddGroup}, client.isConnected());
    if (node->key.compare(client.Gateway().Server(), Qt::CaseInsensitive) == 0)
        return allDisabledBut({});
    if (const auto* agent = client.MyAgents.record(node->key))
        return allDisabledBut({agent->Online ? ContextEntry::LogoffGate : ContextEntry::GateLogin});
    return isContact(*node, client) ? forContact() : ContextState();
}
