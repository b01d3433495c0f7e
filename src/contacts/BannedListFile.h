#pragma once

#include <QString>

class CBanList;

namespace pugi
{
class xml_document;
}

// BannedList.xml: <banned> with one <item> for each blocked address. UTF-8, readable by its owner only, and
// written whole or not at all.
//
// Operations yield an empty text, or a sentence for the person about what went wrong. A file that can't be
// understood is never written over.
class BannedListFile
{
public:
    // Empty for the person's own file.
    explicit BannedListFile(QString file = {});

    // Adds the file's addresses to `list`, save those that stand in it already. A missing file is made.
    QString load(CBanList& list) const;
    // Appends the address; the file may hold it twice.
    QString add(const QString& JID) const;
    // Removes the address where it stands first.
    QString remove(const QString& JID) const;

    const QString& fileName() const { return file_; }

private:
    QString create() const;
    QString read(pugi::xml_document& document) const;
    QString write(const pugi::xml_document& document) const;
    QString writeText(const QByteArray& text) const;

    QString file_;
};
