#include "contacts/ContactDrop.h"

#include "contacts/Client.h"
#include "contacts/ContactTree.h"
#include "contacts/FixedGroups.h"
#include "contacts/RosterStanzas.h"

namespace
{

bool oneOf(const QString& text, std::initializer_list<QStringView> words)
{
    return std::any_of(words.begin(), words.end(), [&](QStringView word) { return text == word; });
}

QString parentText(const TreeNode& node)
{
    return node.parent ? node.parent->text : QString();
}

bool mayLeave(const TreeNode& dragged, const QString& server)
{
    return !oneOf(dragged.text, {u"Services", u"Gateways", server, u"ChatRoom", u"Information"}) &&
           !oneOf(parentText(dragged), {u"Services", u"Gateways", u"ChatRoom"}) && dragged.parent;
}

// The Italian names are kept for lists of older versions, whose groups were called so.
bool mayTake(const TreeNode& target, const QString& server)
{
    return !oneOf(target.key, {u"Servizi", u"Gateways", u"ChatRoom", u"Informazioni", server}) &&
           !oneOf(parentText(target), {u"Servizi", u"Gateways"});
}

// The old group goes when the contact was the last in it, as far as the tree shows it now.
void removeOldGroup(Client& client, ContactTree& tree, const TreeNode& moved, const QString& selected)
{
    const auto* item = client.MyRoster.record(selected);
    TreeNode* old = item ? tree.folder(item->group) : nullptr;
    if (!old || old->children.size() > 1)
        return;
    // The entry is that of the new group, and without one the old node stays. Both are kept as they are.
    if (client.MyGroups.Remove(client.MyGroups.FindGroup(moved.parent->key)))
        tree.remove(old);
}

} // namespace

bool contactdrop::drop(Client& client, ContactTree& tree, const QString& dragged, const QString& target,
                       const QString& selected)
{
    TreeNode* node = tree.row(dragged);
    TreeNode* goal = tree.folder(target) ? tree.folder(target) : tree.row(target);
    const QString server = client.Gateway().Server();
    if (!node || !goal || node->text == goal->text || !mayLeave(*node, server) || !mayTake(*goal, server))
        return false;
    if (goal->parent || (goal->children.empty() && !client.MyGroups.Exists(goal->key)))
        goal = goal->parent;
    const auto* item = client.MyRoster.record(node->key);
    if (!goal || !item)
        return false;
    const QString group =
        goal->text.compare(groups::contacts(), Qt::CaseInsensitive) == 0 ? QString() : goal->text;
    stanzas::send(client, stanzas::moveContact(node->key, item->nick, group));
    tree.move(node, goal);
    removeOldGroup(client, tree, *node, selected);
    return true;
}
