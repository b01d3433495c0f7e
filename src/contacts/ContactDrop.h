#pragma once

class ContactTree;
struct Client;
class QString;

// What happens when a node of the contact tree is dropped on another.
namespace contactdrop
{

// Asks the server to put the contact of node `dragged` into the group on or in which `target` stands, and
// draws it there at once. `selected` is the key of the selected node. False when the drop is refused.
bool drop(Client& client, ContactTree& tree, const QString& dragged, const QString& target,
          const QString& selected);

} // namespace contactdrop
