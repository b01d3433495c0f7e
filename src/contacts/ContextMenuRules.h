#pragma once

#include <array>
#include <optional>

struct Client;
struct TreeNode;

// The entries of the contact menu, in their order.
enum class ContextEntry {
    AddFriend,
    AddGroup,
    GateLogin,
    LogoffGate,
    RemoveFriend,
    RenameFriend,
    MoveFriend,
    SendMessage,
    History,
    ShowVCard,
    NotPres,
};

// What a click does to each entry, all disabled at first: enable, disable, or leave it as it was.
using ContextState = std::array<std::optional<bool>, 11>;

namespace contextmenu
{

// For a click on `node`, or beside all nodes for null.
ContextState stateFor(const TreeNode* node, const Client& client);

// A person's row: no folder, no gateway, not the server's. Null is none.
bool isContact(const TreeNode* node, const Client& client);

} // namespace contextmenu
