#pragma once

#include <QDir>
#include <QFileInfo>

// Whole files, as tests lay them out and read them back.
namespace files
{

// Makes the file, and its folder.
inline void write(const QString& name, const QByteArray& bytes)
{
    QFile file(name);
    if (!QDir().mkpath(QFileInfo(name).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(bytes) != bytes.size())
        qFatal("%s can't be written", qPrintable(name));
}

// Empty when there is no such file.
inline QByteArray read(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace files
