#include "settings/XmlFile.h"

#include "settings/Paths.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>

namespace
{

QString tr(const char* text)
{
    return QCoreApplication::translate("XmlFile", text);
}

// Files of older versions were written in the system's 8-bit code page.
QString decoded(const QByteArray& bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(bytes);
    return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}

} // namespace

XmlFile::XmlFile(QString file, QByteArray root, QByteArray initial)
    : file_(std::move(file)), root_(std::move(root)), initial_(std::move(initial))
{
}

QString XmlFile::create() const
{
    const QString folder = QFileInfo(file_).path();
    if (!paths::makePrivateFolder(folder))
        return tr("This folder can't be made: %1").arg(folder);
    return writeText(initial_ + '\n');
}

QString XmlFile::read(pugi::xml_document& document) const
{
    if (!QFileInfo::exists(file_)) {
        const QString error = create();
        if (!error.isEmpty())
            return error;
    }
    if (!QFileInfo(file_).isFile()) // a pipe may keep a reader waiting for ever
        return tr("This file can't be read: %1\n%2").arg(file_, tr("It is no file."));
    paths::makePrivateFile(file_);
    QFile file(file_);
    if (!file.open(QIODevice::ReadOnly))
        return tr("This file can't be read: %1\n%2").arg(file_, file.errorString());
    if (!parse(file.readAll(), document))
        return tr("This file is damaged and was left as it is: %1\nMove it away to begin a new one.")
            .arg(file_);
    return {};
}

bool XmlFile::parse(const QByteArray& bytes, pugi::xml_document& document) const
{
    const QByteArray text = decoded(bytes).toUtf8();
    constexpr unsigned options = pugi::parse_full | pugi::parse_ws_pcdata;
    return document.load_buffer(text.constData(), static_cast<std::size_t>(text.size()), options,
                                pugi::encoding_utf8) &&
           root_ == document.document_element().name();
}

QString XmlFile::renew() const
{
    pugi::xml_document document;
    QFile file(file_);
    if (!paths::open(file, QIODevice::ReadOnly) || parse(file.readAll(), document))
        return {};
    const QString aside = file_ + QStringLiteral(".damaged");
    QFile::remove(aside);
    if (!file.rename(aside))
        return tr("This file is damaged: %1\n%2").arg(file_, file.errorString());
    const QString error = create();
    return error.isEmpty()
               ? tr("This file was damaged: %1\nIt is kept as %2, and a new one was begun.").arg(file_, aside)
               : error;
}

QString XmlFile::write(pugi::xml_document& document) const
{
    struct Writer : pugi::xml_writer {
        QByteArray bytes;
        void write(const void* data, std::size_t size) override
        {
            bytes.append(static_cast<const char*>(data), static_cast<qsizetype>(size));
        }
    } writer;
    auto declared = document.first_child().attribute("encoding");
    if (document.first_child().type() == pugi::node_declaration && declared)
        declared.set_value("UTF-8"); // whatever the file said before
    document.save(writer, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
    return writeText(writer.bytes.trimmed() + '\n');
}

QString XmlFile::writeText(const QByteArray& text) const
{
    const QString refused = tr("This file can't be written: %1\n%2");
    if (paths::isReadOnly(file_))
        return refused.arg(file_, tr("The file is read-only."));
    QSaveFile file(file_);
    if (!file.open(QIODevice::WriteOnly) || !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) ||
        file.write(text) != text.size() || !file.commit())
        return refused.arg(file_, paths::problem(file));
    return {};
}
