#include "contacts/forms/ContactWindows.h"

#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "desktop/forms/Form.h"
#include "desktop/forms/ShowInTrayForm.h"

ContactWindows::ContactWindows(FormRegistry& registry, Client& client) : registry_(registry), client_(client)
{
}

RosterForm* ContactWindows::rosterForm() const
{
    return qobject_cast<RosterForm*>(registry_.find(QStringLiteral("RosterForm")));
}

Roster* ContactWindows::roster() const
{
    auto* form = rosterForm();
    return form ? form->Roster1 : nullptr;
}

RosterForm& ContactWindows::makeRosterForm()
{
    if (auto* form = rosterForm())
        return *form;
    auto* form = new RosterForm(registry_, client_);
    forwardWishes(*form);
    emit rosterFormMade(*form);
    return *form;
}

void ContactWindows::forwardWishes(RosterForm& form)
{
    connect(&form, &RosterForm::connectRequested, this, &ContactWindows::connectRequested);
    connect(&form, &RosterForm::disconnectRequested, this, &ContactWindows::disconnectRequested);
    connect(&form, &RosterForm::exitRequested, this, &ContactWindows::exitRequested);
    connect(&form, &RosterForm::openConversation, this, &ContactWindows::openConversation);
    connect(&form, &RosterForm::showPreferences, this, &ContactWindows::showPreferences);
    connect(&form, &RosterForm::showNotices, this, &ContactWindows::showNotices);
    connect(&form, &RosterForm::showHistory, this, &ContactWindows::showHistory);
    connect(&form, &RosterForm::groupChatRequested, this, &ContactWindows::groupChatRequested);
    connect(&form, &RosterForm::findContactsRequested, this, &ContactWindows::findContactsRequested);
    connect(&form, &RosterForm::mailWatcherRequested, this, &ContactWindows::mailWatcherRequested);
    connect(&form, &RosterForm::aboutRequested, this, &ContactWindows::aboutRequested);
    connect(&form, &RosterForm::showInTrayRequested, this, &ContactWindows::showInTray);
}

bool ContactWindows::isInitiated() const
{
    const auto* list = roster();
    return list && list->IsInitiated();
}

void ContactWindows::OnIQ(PlugInContext& context)
{
    makeRosterForm().Roster1->Myapplicationplugin().OnIQ(context);
}

void ContactWindows::OnPresence(PlugInContext& context)
{
    makeRosterForm().Roster1->Myapplicationplugin().OnPresence(context);
}

void ContactWindows::refresh()
{
    if (auto* list = roster())
        list->Refresh();
}

void ContactWindows::refreshAppearance()
{
    if (auto* list = roster())
        list->RefreshAppearance();
}

void ContactWindows::applyOnTop()
{
    if (auto* form = rosterForm())
        form->applyOnTop();
}

void ContactWindows::tell(const QString& text)
{
    if (auto* form = rosterForm())
        form->tell(text);
}

void ContactWindows::setUnread(const QStringList& jids)
{
    if (auto* list = roster())
        list->setUnread(jids);
}

ShowInTrayForm& ContactWindows::whereForm()
{
    return registry_.single<ShowInTrayForm>(QStringLiteral("ShowInTrayForm"),
                                            [this] { return new ShowInTrayForm(registry_); });
}

void ContactWindows::closeWhere()
{
    if (auto* form = registry_.find(QStringLiteral("ShowInTrayForm")))
        form->requestUnload(CloseMode::Code);
}

void ContactWindows::showInTray()
{
    closeWhere(); // it may say something else
    whereForm().show();
}

void ContactWindows::tellWhere(const QString& title, const QString& description)
{
    whereForm().setTexts(title, description);
    whereForm().show();
}
