#include "contacts/ContextMenuRules.h"

#include "contacts/Client.h"
#include "contacts/ContactTree.h"

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

ContextState forContact()
{
    ContextState state;
    state.fill(true);
    state[static_cast<std::size_t>(ContextEntry::GateLogin)] = false;
    state[static_cast<std::size_t>(ContextEntry::LogoffGate)] = false;
    state[static_cast<std::size_t>(ContextEntry::AddFriend)] = std::nullopt;
    return state;
}

bool isServer(const TreeNode& node, const Client& client)
{
    return node.key.compare(client.Gateway().Server(), Qt::CaseInsensitive) == 0;
}

} // namespace

ContextState contextmenu::stateFor(const TreeNode* node, const Client& client)
{
    if (!node)
        return allDisabledBut({ContextEntry::AddFriend, ContextEntry::AddGroup}, client.isConnected());
    if (isContact(node, client))
        return forContact();
    const auto* agent =
        node->parent && !isServer(*node, client) ? client.MyAgents.record(node->key) : nullptr;
    if (!agent)
        return allDisabledBut({});
    return allDisabledBut({agent->Online ? ContextEntry::LogoffGate : ContextEntry::GateLogin});
}

bool contextmenu::isContact(const TreeNode* node, const Client& client)
{
    if (!node || !node->parent || isServer(*node, client) || client.MyAgents.JIDExists(node->key))
        return false;
    const auto* item = client.MyRoster.record(node->key);
    return item && !item->IsGateway;
}
