#pragma once

// Something that does a bounded piece of its work each time it is triggered, on the user interface thread.
class ITriggerReceiver
{
public:
    virtual ~ITriggerReceiver() = default;
    virtual void Trigger() = 0;
};
