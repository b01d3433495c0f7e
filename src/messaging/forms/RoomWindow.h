#pragma once

#include "desktop/forms/SessionForm.h"

// The window of a conference room: its Tag is the room's bare JID.
class RoomWindow : public SessionForm
{
    Q_OBJECT

public:
    using SessionForm::SessionForm;
};
