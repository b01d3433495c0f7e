#pragma once

#include <pugixml.hpp>

// The account's own card between what the client writes and what stands on the server: the client knows a
// part of a card only, and some servers keep a part only. Both cards are in the dialect's spelling.
namespace owncard
{

// Adds to `written` what `read` holds and the client has no field for: pictures, further numbers, parts of
// names. What `copy`, the client's own card as it was saved, explains isn't added; null for none.
void addUnknown(pugi::xml_node written, pugi::xml_node read, pugi::xml_node copy);

} // namespace owncard
