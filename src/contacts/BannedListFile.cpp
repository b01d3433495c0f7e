#include "contacts/BannedListFile.h"

#include "contacts/Collections.h"
#include "contacts/RosterItemXml.h"
#include "engine/Xml.h"
#include "settings/Paths.h"

BannedListFile::BannedListFile()
    : file_(paths::configFolder() + QStringLiteral("/BannedList.xml"), "banned", "<banned></banned>")
{
}

QString BannedListFile::load(CBanList& list) const
{
    pugi::xml_document document;
    const QString error = file_.read(document);
    if (!error.isEmpty())
        return error;
    rosteritem::forEach(document, "item", [&](pugi::xml_node item) {
        const QString JID = xml::text(item);
        if (!JID.isEmpty() && !list.BannedJID(JID))
            list.Add(JID);
        return true;
    });
    return {};
}

QString BannedListFile::add(const QString& JID) const
{
    pugi::xml_document document;
    const QString error = file_.read(document);
    if (!error.isEmpty())
        return error;
    rosteritem::forEach(document, "banned", [&](pugi::xml_node banned) {
        banned.append_child("item").text().set(JID.toUtf8().constData());
        return true;
    });
    return file_.write(document);
}

QString BannedListFile::remove(const QString& JID) const
{
    pugi::xml_document document;
    const QString error = file_.read(document);
    if (!error.isEmpty())
        return error;
    rosteritem::forEach(document, "banned", [&](pugi::xml_node banned) {
        const auto child = banned.find_child([&](pugi::xml_node node) { return xml::text(node) == JID; });
        banned.remove_child(child);
        return true;
    });
    return file_.write(document);
}
