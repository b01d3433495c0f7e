#include "settings/Paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <filesystem>

namespace paths
{

namespace
{

constexpr QFileDevice::Permissions ownerOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
constexpr QFileDevice::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                            QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;

QString base(QStandardPaths::StandardLocation location, const char* below)
{
    return QStandardPaths::writableLocation(location) + QLatin1String(below);
}

bool isPipe(const QString& file)
{
    std::error_code ignored;
    return std::filesystem::is_fifo(QFile::encodeName(file).toStdString(), ignored);
}

} // namespace

QString settingsFile()
{
    return base(QStandardPaths::GenericConfigLocation, "/BreloIM/BreloIM.ini");
}

QString dataFolder()
{
    return base(QStandardPaths::GenericDataLocation, "/Brelo/BreloIM");
}

QString configFolder()
{
    return dataFolder() + QStringLiteral("/ConfigFile");
}

QString logFolder()
{
    return dataFolder() + QStringLiteral("/message logs");
}

QString autostartFolder()
{
    return base(QStandardPaths::GenericConfigLocation, "/autostart");
}

QString applicationFolder()
{
    const QDir program(QCoreApplication::applicationDirPath());
    const QString built = program.filePath(QStringLiteral("share/breloim"));
    return QFileInfo(built).isDir() ? built
                                    : QDir::cleanPath(program.filePath(QStringLiteral("../share/breloim")));
}

QString applicationFile(const QString& named)
{
    const bool below = named.startsWith(u'\\') || (named.startsWith(u'/') && !QFileInfo(named).isFile());
    if (!below)
        return named;
    const QString file = applicationFolder() + QString(named).replace(u'\\', u'/');
    // A missing file with a slash in front was meant as an absolute path, unless the installed data has it.
    return named.startsWith(u'\\') || QFileInfo(file).isFile() ? file : named;
}

bool makePrivateFolder(const QString& folder)
{
    const QFileInfo info(folder);
    if (info.isDir())
        return !(info.permissions() & others) || QFile::setPermissions(folder, ownerOnly);
    const QString parent = info.absolutePath();
    if (!QFileInfo(parent).isDir() && !makePrivateFolder(parent))
        return false;
    return QDir().mkdir(folder, ownerOnly);
}

void makePrivateFile(const QString& file)
{
    const auto granted = QFile::permissions(file);
    if (granted & others && QFileInfo(file).isFile())
        QFile::setPermissions(file, granted & ownerOnly);
}

bool isReadOnly(const QString& file)
{
    return QFileInfo::exists(file) && !(QFile::permissions(file) & QFile::WriteOwner);
}

bool open(QFile& file, QIODevice::OpenMode mode)
{
    return !isPipe(file.fileName()) && file.open(mode, QFile::ReadOwner | QFile::WriteOwner);
}

// What was written in part only has left no reason behind.
QString problem(const QFileDevice& file)
{
    if (isPipe(file.fileName()))
        return QCoreApplication::translate("Paths", "It is no file.");
    const bool isKnown =
        file.error() != QFileDevice::NoError && file.errorString() != QLatin1String("Unknown error");
    return !isKnown ? QCoreApplication::translate("Paths", "There is no room left for it.")
                    : file.errorString();
}

} // namespace paths
