#pragma once

#include "services/Agents.h"
#include "services/FileTransferUsrCtrl.h"
#include "services/forms/SearchWindows.h"
#include "services/forms/VCardWindows.h"

class ContactWindows;

// The room's face: the windows of the cards and the search, calls, and the reader of the server's services,
// which fills the contact list.
class ServiceWindows
{
public:
    // All must outlive the object.
    ServiceWindows(FormRegistry& registry, Client& client, ContactWindows& contacts,
                   MessageWindows& messages);

    VCardWindows vCards;
    Agents agents;
    FileTransferUsrCtrl calls;
    SearchWindows search;
};
