#pragma once

#include "settings/XmlFile.h"

#include <QString>

class CBanList;

// BannedList.xml: <banned> with one <item> for each blocked address.
//
// Operations yield an empty text, or a sentence for the person about what went wrong.
class BannedListFile
{
public:
    BannedListFile();

    // Adds the file's addresses to `list`, save those that stand in it already. A missing file is made.
    QString load(CBanList& list) const;
    // Appends the address; the file may hold it twice.
    QString add(const QString& JID) const;
    // Removes the address where it stands first.
    QString remove(const QString& JID) const;

    const QString& fileName() const { return file_.fileName(); }

private:
    XmlFile file_;
};
