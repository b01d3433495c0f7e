#pragma once

class PlugInContext;

// What the engine calls for each event. A control that takes part overrides the events that it has a use for.
class ApplicationPlugIn
{
public:
    virtual ~ApplicationPlugIn() = default;
    virtual void OnMessage(PlugInContext&) {}
    virtual void OnIQ(PlugInContext&) {}
    virtual void OnPresence(PlugInContext&) {}
    virtual void ApplicationOnStart(PlugInContext&) {}
    virtual void ApplicationOnEnd(PlugInContext&) {}
    virtual void SessionOnStart(PlugInContext&) {}
    virtual void SessionOnEnd(PlugInContext&) {}
    virtual void OnRawXML(PlugInContext&) {}
    // A message of the client's own came back; the session is that of its receiver.
    virtual void OnReturned(PlugInContext&) {}
};
