#pragma once

#include <QString>
#include <pugixml.hpp>

// How the contact list reads an <item/> of a stanza.
namespace rosteritem
{

// Calls `take` for each element of this name below `root`, in document order, until it returns false.
template <typename Take>
void forEach(pugi::xml_node root, const char* name, Take&& take)
{
    struct Walker : pugi::xml_tree_walker {
        const char* name;
        Take& take;
        Walker(const char* n, Take& t) : name(n), take(t) {}
        bool for_each(pugi::xml_node& node) override
        {
            return std::string_view(node.name()) != name || take(node);
        }
    } walker(name, take);
    root.traverse(walker);
}

// The text of all of the item's groups, run together; empty when the item speaks of no group.
QString group(pugi::xml_node item);

} // namespace rosteritem
