#pragma once

#include <QString>

// The start-with-the-system entry: an XDG autostart file (Desktop Application Autostart Specification) behind
// the operations of a registry key.
class CRegistry
{
public:
    // Opens or creates the folder that holds the entries. False when it can't be made.
    bool openOrCreateKey();
    // Removes the entry; true when there is none afterwards.
    bool deleteValue(const QString& name);
    // Writes an entry that starts `command`. False when it could not be written.
    bool setStringValue(const QString& name, const QString& command);
    void close();

private:
    QString folder_;
};
