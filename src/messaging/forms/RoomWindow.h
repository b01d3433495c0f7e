#pragma once

#include "messaging/forms/ConversationForm.h"

// The window of a conference room: its Tag is the room's bare JID.
class RoomWindow : public ConversationForm
{
    Q_OBJECT

public:
    using ConversationForm::ConversationForm;

    // A room that was closed is being left.
    bool isOpen() const override { return !isHidden(); }
    // The nick of the occupant with this address, empty when nobody of it is there.
    virtual QString nickOf(const QString&) const { return {}; }
};
