#pragma once

#include "contacts/forms/ContactWindows.h"
#include "groupchat/forms/GroupWindows.h"
#include "mailwatch/forms/MailWindows.h"
#include "messaging/forms/MessageWindows.h"
#include "preferences/forms/PreferenceWindows.h"
#include "services/forms/ServiceWindows.h"
#include "session/forms/SessionWindows.h"

// The faces of the rooms, and the wires between rooms that don't know each other.
class Windows
{
public:
    // All must outlive the object.
    Windows(FormRegistry& registry, Client& client, SettingsStore& store);

    FormRegistry& registry;
    ContactWindows contacts;
    MessageWindows messages;
    ServiceWindows services;
    GroupWindows groups;
    PreferenceWindows preferences;
    MailWindows mail;
    SessionWindows session;

private:
    void wireContacts();
    void wireMessages();
    void wireRooms();
    void wirePreferences();
    void wireSignIn();
};
