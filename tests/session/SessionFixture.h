#pragma once

#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "contacts/forms/RosterView.h"
#include "preferences/forms/PreferencePanel.h"
#include "preferences/forms/PreferencesForm.h"
#include "session/forms/SignInForm.h"
#include "support/FakeClient.h"
#include "support/Table.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

struct SignedInClient : FakeClient {
    SignedInClient() { signIn(); }
};

// What happens to the client, as a column of a table.
using Act = std::function<void(FakeClient&)>;

// The server's answer to a name that it does not know.
inline const QString refusal = "<iq type='error'><query xmlns='jabber:iq:auth'/></iq>";

inline QString message(const QString& type, const QString& from = "juliet@montague.example/balcony")
{
    const QString text = "<message from='%1' to='romeo@montague.example/BreloIM' type='%2'><body>hark</body>"
                         "</message>";
    return text.arg(from, type);
}
