#include "support/TempProfile.h"

TempProfile::TempProfile() : oldConfig_(qgetenv("XDG_CONFIG_HOME")), oldData_(qgetenv("XDG_DATA_HOME"))
{
    qputenv("XDG_CONFIG_HOME", (folder_.path() + QStringLiteral("/config")).toUtf8());
    qputenv("XDG_DATA_HOME", (folder_.path() + QStringLiteral("/data")).toUtf8());
}

TempProfile::~TempProfile()
{
    qputenv("XDG_CONFIG_HOME", oldConfig_);
    qputenv("XDG_DATA_HOME", oldData_);
}
