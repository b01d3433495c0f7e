#include "session/Routes.h"

bool Routes::pass(const char* place, PlugInContext& context) const
{
    const auto handler = handlers_.constFind(QLatin1String(place));
    if (handler == handlers_.constEnd())
        return false;
    (*handler)(context);
    return true;
}
