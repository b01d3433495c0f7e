#include "inside/Spy.h"

#include "engine/PlugInContext.h"

void Spy::OnMessage(PlugInContext& context)
{
    if (context.Stanza().From().startsWith(u"control@") &&
        context.Stanza().MessageFields().Body() == u"done") {
        done = true;
        return;
    }
    ++messages;
    next_.OnMessage(context);
}

void Spy::OnIQ(PlugInContext& context)
{
    ++iqs;
    next_.OnIQ(context);
}

void Spy::OnPresence(PlugInContext& context)
{
    ++presences;
    next_.OnPresence(context);
}
