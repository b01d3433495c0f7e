#pragma once

#include <QString>

// Where files lie. All follow the XDG base directories.
namespace paths {

// BreloIM.ini: $XDG_CONFIG_HOME/BreloIM/BreloIM.ini.
QString settingsFile();
// The person's data: $XDG_DATA_HOME/Brelo/BreloIM, no trailing separator.
QString dataFolder();
// BannedList.xml and StatusMsgs.xml lie here: dataFolder()/ConfigFile.
QString configFolder();
// Conversation logs lie here: dataFolder()/message logs.
QString logFolder();
// The installed data, share/breloim, found from the executable; no trailing separator.
QString applicationFolder();
// A file named by a setting: an absolute path as it stands, one that begins with a separator of either kind
// below applicationFolder(). Empty stays empty.
QString applicationFile(const QString& named);
// Makes `folder` and its parents, readable by their owner only. False when that can't be done.
bool makePrivateFolder(const QString& folder);

} // namespace paths
