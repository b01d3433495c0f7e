#include "settings/Module.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibrary>

namespace module
{

Factory factory(const QString& name)
{
    const QDir program(QCoreApplication::applicationDirPath());
    for (const char* folder : {"", "../lib/breloim/"}) {
        QLibrary library(program.filePath(QLatin1String(folder) + name));
        if (const auto found = library.resolve("breloMake"))
            return reinterpret_cast<Factory>(found);
    }
    return nullptr;
}

} // namespace module
