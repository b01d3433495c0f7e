#pragma once

#include "engine/Safety.h"

#include <QString>

#include <optional>

class IniFile;

// How the accounts signed in the last time, as the settings file keeps it.
namespace lastSafety
{

constexpr int mostAccounts = 50;

// Null for an account, a bare JID, that never did, and for what can't be understood.
std::optional<Safety> read(const IniFile& file, const QString& account);
// The account becomes the newest; beyond the bound the oldest goes. False when nothing had to be changed.
bool write(IniFile& file, const QString& account, const Safety& reached);

} // namespace lastSafety
