#include "preferences/StartEntry.h"

#include "settings/CRegistry.h"

#include <QCoreApplication>

namespace startentry
{
namespace
{

QString entryName()
{
    return QStringLiteral("BreloIM");
}

} // namespace

bool isSet()
{
    return CRegistry::hasValue(entryName());
}

bool set(bool on)
{
    CRegistry registry;
    if (!registry.openOrCreateKey())
        return false;
    return on ? registry.setStringValue(entryName(), QCoreApplication::applicationFilePath())
              : registry.deleteValue(entryName());
}

} // namespace startentry
