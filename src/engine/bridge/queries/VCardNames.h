#pragma once

#include <pugixml.hpp>

// The element names of a vCard, in the dialect and as XEP-0054 spells them. Both work on the card in place.
namespace vcard
{

void toWire(pugi::xml_node card);
void toDialect(pugi::xml_node card);

} // namespace vcard
