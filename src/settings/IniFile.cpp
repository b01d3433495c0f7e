#include "settings/IniFile.h"

#include "settings/Paths.h"

#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace
{

constexpr QFileDevice::Permissions ownerOnly = QFile::ReadOwner | QFile::WriteOwner;

QString pathOf(const QString& section, const QString& key)
{
    return section + u'/' + key;
}

bool isIniLine(const QByteArray& line)
{
    const QByteArray text = line.trimmed();
    if (text.isEmpty() || text.startsWith(';') || text.startsWith('#'))
        return true;
    return text.startsWith('[') ? text.endsWith(']') : text.contains('=') && !text.contains('\0');
}

// QSettings reports a bad line only to the first of its readers in a process; this asks the file itself.
bool isWholeIni(const QString& name)
{
    QFile file(name);
    if (!file.exists())
        return true;
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const auto lines = file.readAll().split('\n');
    return std::all_of(lines.begin(), lines.end(), isIniLine);
}

// Null stands for a removed entry; an empty text is a text.
QString notNull(const QString& text)
{
    return text.isNull() ? QStringLiteral("") : text;
}

// A comma outside of quotes makes a list of a text that somebody wrote by hand.
QString textOf(const QVariant& value)
{
    const bool isList = value.typeId() == QMetaType::QStringList;
    return notNull(isList ? value.toStringList().join(QStringLiteral(", ")) : value.toString());
}

} // namespace

IniFile::IniFile(QString file) : file_(std::move(file)), damaged_(isNoFile() || !isWholeIni(file_))
{
    if (!isNoFile())
        load();
}

bool IniFile::isNoFile() const
{
    const QFileInfo info(file_);
    return info.exists() && !info.isFile();
}

QString IniFile::keyOf(const QString& text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text.trimmed().toLower(), ":[]"));
}

void IniFile::load()
{
    const QSettings stored(file_, QSettings::IniFormat);
    for (const QString& path : stored.allKeys())
        entries_.insert(path.toCaseFolded(), {path, textOf(stored.value(path))});
}

std::optional<QString> IniFile::read(const QString& section, const QString& key) const
{
    const auto found = entries_.constFind(pathOf(section, key).toCaseFolded());
    return found == entries_.cend() || found->text.isNull() ? std::nullopt : std::optional(found->text);
}

QStringList IniFile::keys(const QString& section) const
{
    QStringList found;
    for (const Entry& entry : entries_) {
        if (!entry.text.isNull() && entry.path.startsWith(section + u'/', Qt::CaseInsensitive))
            found += entry.path.mid(section.size() + 1);
    }
    found.sort();
    return found;
}

IniFile::Entry& IniFile::changed(const QString& section, const QString& key)
{
    const QString path = pathOf(section, key);
    const QString folded = path.toCaseFolded();
    changes_.append(folded);
    Entry& entry = entries_[folded];
    if (entry.path.isEmpty())
        entry.path = path;
    return entry;
}

void IniFile::write(const QString& section, const QString& key, const QString& text)
{
    changed(section, key).text = notNull(text);
}

void IniFile::remove(const QString& section, const QString& key)
{
    changed(section, key).text = QString();
}

bool IniFile::keepCopy() const
{
    if (isNoFile())
        return false;
    QFile::remove(aside());
    return QFile::copy(file_, aside()) && QFile::setPermissions(aside(), ownerOnly);
}

bool IniFile::setAside()
{
    QFile::remove(aside());
    if (!QFile::rename(file_, aside()) || !QFile::setPermissions(aside(), ownerOnly))
        return false;
    damaged_ = false;
    // What could be read goes into the new file.
    changes_ += entries_.keys();
    return true;
}

bool IniFile::prepareFile()
{
    if (isNoFile() || !paths::makePrivateFolder(QFileInfo(file_).absolutePath()) ||
        paths::isReadOnly(file_) || (damaged_ && !setAside()))
        return false;
    // QSettings gives its new content the permissions of the file that stands, from the first byte on.
    QFile file(file_);
    return file.exists() ? file.setPermissions(ownerOnly) : file.open(QIODevice::NewOnly, ownerOnly);
}

bool IniFile::save()
{
    if (!prepareFile())
        return false;
    QSettings stored(file_, QSettings::IniFormat);
    for (const QString& folded : std::as_const(changes_)) {
        const Entry& entry = entries_[folded];
        if (entry.text.isNull())
            stored.remove(entry.path);
        else
            stored.setValue(entry.path, entry.text);
    }
    stored.sync();
    changes_.clear();
    return stored.status() == QSettings::NoError;
}
