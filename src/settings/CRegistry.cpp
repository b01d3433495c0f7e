#include "settings/CRegistry.h"

#include "settings/Paths.h"

#include <QFile>
#include <QSaveFile>

#include <algorithm>

bool CRegistry::openOrCreateKey()
{
    const QString folder = paths::autostartFolder();
    // The folder belongs to all programs: an existing one keeps its permissions.
    if (QFile::exists(folder) || paths::makePrivateFolder(folder))
        folder_ = folder;
    return !folder_.isEmpty();
}

QString CRegistry::entryFile(const QString& name) const
{
    const bool plain = !name.isEmpty() && !name.contains(u'/') && !name.startsWith(u'.');
    return folder_.isEmpty() || !plain ? QString() : folder_ + u'/' + name + QStringLiteral(".desktop");
}

bool CRegistry::hasValue(const QString& name)
{
    CRegistry reader;
    reader.folder_ = paths::autostartFolder();
    QFile entry(reader.entryFile(name));
    if (!paths::open(entry, QIODevice::ReadOnly))
        return false;
    const auto lines = entry.readAll().toLower().split('\n');
    return !lines.contains("hidden=true") && !lines.contains("x-gnome-autostart-enabled=false");
}

bool CRegistry::deleteValue(const QString& name)
{
    const QString file = entryFile(name);
    return !file.isEmpty() && (!QFile::exists(file) || QFile::remove(file));
}

bool CRegistry::setStringValue(const QString& name, const QString& program)
{
    const QString file = entryFile(name);
    const bool hasControl = std::any_of(program.begin(), program.end(), [](QChar c) { return c < u' '; });
    if (file.isEmpty() || program.isEmpty() || hasControl)
        return false;
    QSaveFile entry(file);
    if (!entry.open(QIODevice::WriteOnly))
        return false;
    entry.write(QStringLiteral("[Desktop Entry]\nType=Application\nName=%1\nExec=%2\nIcon=breloim\n"
                               "Terminal=false\nX-GNOME-Autostart-enabled=true\n")
                    .arg(name, execValue(program))
                    .toUtf8());
    return entry.commit();
}

QString CRegistry::execValue(const QString& program)
{
    QString quoted;
    for (const QChar c : program) {
        // An escape within the quotes is itself escaped once more as text of the file.
        if (c == u'\\')
            quoted += QStringLiteral("\\\\\\\\");
        else if (c == u'"' || c == u'`' || c == u'$')
            quoted += QStringLiteral("\\\\") + c;
        else if (c == u'%')
            quoted += QStringLiteral("%%");
        else
            quoted += c;
    }
    return u'"' + quoted + u'"';
}
