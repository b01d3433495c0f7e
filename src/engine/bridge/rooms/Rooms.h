#pragma once

#include "engine/bridge/Translator.h"

// The translators of what belongs to rooms.
namespace rooms
{

std::shared_ptr<Translator> invitations();

} // namespace rooms
