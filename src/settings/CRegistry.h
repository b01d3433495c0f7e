#pragma once

#include <QString>

// The start-with-the-system entry: an XDG autostart file (freedesktop.org) behind
// the operations of a registry key.
class CRegistry
{
public:
    // Opens or creates the folder that holds the entries. False when it can't be made.
    bool openOrCreateKey();
    // Whether the entry stands and the person has not switched it off in the desktop's own settings.
    static bool hasValue(const QString& name);
    // Removes the entry; true when there is none afterwards. Needs an open key.
    bool deleteValue(const QString& name);
    // Writes an entry that starts the program with the path `program`. False when it could not be written or
    // no key is open.
    bool setStringValue(const QString& name, const QString& program);
    void close() { folder_.clear(); }

    // The value of an Exec key that starts the program with just this path (as freedesktop.org tells it:
    // quoted and escaped twice, "%" doubled).
    static QString execValue(const QString& program);

private:
    // The entry's file; empty for a name that isn't a plain file name.
    QString entryFile(const QString& name) const;

    QString folder_;
};
