#pragma once

#include "engine/ApplicationPlugIn.h"

#include <QString>

// Stands between the engine and the client's own plug-in: passes everything on and counts it. The message
// with which the sandbox ends a flood stops here.
class Spy : public ApplicationPlugIn
{
public:
    explicit Spy(ApplicationPlugIn& next) : next_(next) {}

    int presences = 0;
    int messages = 0;
    int iqs = 0;
    bool done = false;

    void OnMessage(PlugInContext& context) override;
    void OnIQ(PlugInContext& context) override;
    void OnPresence(PlugInContext& context) override;

private:
    ApplicationPlugIn& next_;
};
