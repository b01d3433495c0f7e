#include "contacts/BannedListFile.h"

#include "contacts/CBanList.h"
#include "contacts/RosterItemXml.h"
#include "engine/Xml.h"
#include "settings/Paths.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>

namespace
{

QString tr(const char* text)
{
    return QCoreApplication::translate("BannedListFile", text);
}

// Files of older versions were written in the system's 8-bit code page.
QString decoded(const QByteArray& bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(bytes);
    return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}

} // namespace

BannedListFile::BannedListFile(QString file)
    : file_(file.isEmpty() ? paths::configFolder() + QStringLiteral("/BannedList.xml") : std::move(file))
{
}

QString BannedListFile::load(CBanList& list) const
{
    pugi::xml_document document;
    const QString error = read(document);
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
    const QString error = read(document);
    if (!error.isEmpty())
        return error;
    rosteritem::forEach(document, "banned", [&](pugi::xml_node banned) {
        banned.append_child("item").text().set(JID.toUtf8().constData());
        return true;
    });
    return write(document);
}

QString BannedListFile::remove(const QString& JID) const
{
    pugi::xml_document document;
    const QString error = read(document);
    if (!error.isEmpty())
        return error;
    rosteritem::forEach(document, "banned", [&](pugi::xml_node banned) {
        const auto child = banned.find_child([&](pugi::xml_node node) { return xml::text(node) == JID; });
        banned.remove_child(child);
        return true;
    });
    return write(document);
}

QString BannedListFile::create() const
{
    const QString folder = QFileInfo(file_).path();
    if (!paths::makePrivateFolder(folder))
        return tr("The folder of the blocked contacts can't be made: %1").arg(folder);
    return writeText("<banned></banned>\n");
}

QString BannedListFile::read(pugi::xml_document& document) const
{
    if (!QFileInfo::exists(file_)) {
        const QString error = create();
        if (!error.isEmpty())
            return error;
    }
    QFile file(file_);
    if (!file.open(QIODevice::ReadOnly))
        return tr("The list of blocked contacts can't be read: %1\n%2").arg(file_, file.errorString());
    const QByteArray text = decoded(file.readAll()).toUtf8();
    constexpr unsigned options = pugi::parse_full | pugi::parse_ws_pcdata;
    if (!document.load_buffer(text.constData(), static_cast<std::size_t>(text.size()), options,
                              pugi::encoding_utf8) ||
        std::string_view(document.document_element().name()) != "banned")
        return tr("The list of blocked contacts is damaged and was left as it is: %1\n"
                  "Move the file away to begin a new list.")
            .arg(file_);
    return {};
}

QString BannedListFile::write(const pugi::xml_document& document) const
{
    struct Writer : pugi::xml_writer {
        QByteArray bytes;
        void write(const void* data, std::size_t size) override
        {
            bytes.append(static_cast<const char*>(data), static_cast<qsizetype>(size));
        }
    } writer;
    document.save(writer, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
    return writeText(writer.bytes.trimmed() + '\n');
}

QString BannedListFile::writeText(const QByteArray& text) const
{
    const QString refused = tr("The list of blocked contacts can't be written: %1\n%2");
    // Asked of the file itself: to the system's administrator nothing is read-only.
    if (QFileInfo::exists(file_) && !(QFile::permissions(file_) & QFile::WriteOwner))
        return refused.arg(file_, tr("The file is read-only."));
    QSaveFile file(file_);
    if (!file.open(QIODevice::WriteOnly) || !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) ||
        file.write(text) != text.size() || !file.commit())
        return refused.arg(file_, file.errorString());
    return {};
}
