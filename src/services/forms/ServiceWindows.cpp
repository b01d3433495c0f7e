#include "services/forms/ServiceWindows.h"

#include "contacts/forms/ContactWindows.h"
#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"

namespace
{

Agents::ContactList listOf(ContactWindows& contacts)
{
    const auto roster = [&contacts]() -> Roster& { return *contacts.makeRosterForm().Roster1; };
    return {[&contacts] { return contacts.isInitiated(); }, [roster] { roster().InitRoster(); },
            [roster](const QString& jid, const QString& name) {
                roster().AddItem(jid, name, QStringLiteral("Gateways"), true, false, {}, {});
            }};
}

} // namespace

ServiceWindows::ServiceWindows(FormRegistry& registry, Client& client, ContactWindows& contacts,
                               MessageWindows& messages)
    : vCards(registry, client), agents(client, listOf(contacts)), calls(client),
      search(registry, client, messages)
{
}
