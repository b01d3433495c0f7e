#pragma once

#include <QFile>

// Where files lie. All follow the XDG base directories.
namespace paths
{

// BreloIM.ini: $XDG_CONFIG_HOME/BreloIM/BreloIM.ini.
QString settingsFile();
// The person's data: $XDG_DATA_HOME/Brelo/BreloIM, no trailing separator.
QString dataFolder();
// BannedList.xml and StatusMsgs.xml lie here: dataFolder()/ConfigFile.
QString configFolder();
// Conversation logs lie here: dataFolder()/message logs.
QString logFolder();
// The entries that the desktop starts at log-in: $XDG_CONFIG_HOME/autostart.
QString autostartFolder();
// The installed data, share/breloim, found from the executable: beside its folder when installed, in its
// folder in a build tree. No trailing separator.
QString applicationFolder();
// A file named by a setting. A name that begins with a backslash lies below applicationFolder(); one that
// begins with a slash stands as it is when there is such a file, and lies below applicationFolder()
// otherwise. All other names stand as they are; empty stays empty.
QString applicationFile(const QString& named);
// Makes `folder` and its missing parents, readable by their owner only. False when that can't be done.
bool makePrivateFolder(const QString& folder);
// Takes from others what they may do with a file that exists.
void makePrivateFile(const QString& file);
// Whether the owner may write the file; the system's administrator, to whom nothing is read-only, keeps to
// it.
bool isReadOnly(const QString& file);
// Opens a file, and makes it the owner's alone if it is new. Not a pipe: that may keep whoever opens it
// waiting for ever. False when it failed; problem() says why.
bool open(QFile& file, QIODevice::OpenMode mode);
// Why a file could not be read or written, in words.
QString problem(const QFileDevice& file);

} // namespace paths
