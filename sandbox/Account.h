#pragma once

#include "sandbox/Roster.h"

namespace sandbox
{

// A registered user of the server.
struct Account {
    QString user;
    QString password;
    bool admin = false;
    Roster roster;
    QString vcard;       // the VCARD element as it was set; empty for none
    QStringList offline; // messages that wait, as XML, in the order of arrival
    QString seenMotd;    // the message of the day that was delivered last
};

} // namespace sandbox
