#pragma once

#include "sandbox/World.h"

// The people and places of the demo's world. All of them are invented.
namespace sandbox::demo
{

// Nodes and nicks that the life of the world needs to know.
inline const QString User = QStringLiteral("demo");
inline const QString Echo = QStringLiteral("eva");
inline const QString Asker = QStringLiteral("mirko");
inline const QString Garden = QStringLiteral("garden");
inline const QString FirstTalker = QStringLiteral("Nils");
inline const QString SecondTalker = QStringLiteral("Odile");

// The account demo/demo with its contacts, a room, gateways and some more people in the directory.
void populate(World& world);

} // namespace sandbox::demo
