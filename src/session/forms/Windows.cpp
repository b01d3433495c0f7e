#include "session/forms/Windows.h"

#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "messaging/forms/ConversationMenu.h"
#include "messaging/forms/MessageForm.h"
#include "session/forms/SignInForm.h"

#include <QMenu>
#include <QPointer>

Windows::Windows(FormRegistry& forms, Client& client, SettingsStore& store)
    : registry(forms), contacts(forms, client), messages(forms, client),
      services(forms, client, contacts, messages), groups(forms, client, messages),
      preferences(forms, client, store), mail(forms, client, store), session(forms, client, store)
{
    wireContacts();
    wireMessages();
    wireRooms();
    wirePreferences();
    wireSignIn();
}

void Windows::wireContacts()
{
    QObject::connect(&contacts, &ContactWindows::openConversation, &messages,
                     &MessageWindows::openConversation);
    QObject::connect(&contacts, &ContactWindows::showHistory, &messages.hub, &ChatWindow::ShowMessageLog);
    QObject::connect(&contacts, &ContactWindows::showNotices, &messages, &MessageWindows::showNotices);
    QObject::connect(&contacts, &ContactWindows::showPreferences, &preferences, &PreferenceWindows::show);
    QObject::connect(&contacts, &ContactWindows::mailWatcherRequested, &mail, &MailWindows::StartMailWatcher);
    QObject::connect(&contacts, &ContactWindows::aboutRequested, &session, &SessionWindows::showAbout);
    QObject::connect(&contacts, &ContactWindows::findContactsRequested, &services.search,
                     &SearchWindows::show);
}

void Windows::wireMessages()
{
    QObject::connect(&messages.hub, &ChatWindow::rosterRefreshRequested, &contacts, &ContactWindows::refresh);
    QObject::connect(&messages.hub.unread, &UnreadConversations::changed, &contacts,
                     &ContactWindows::setUnread);
    QObject::connect(&contacts, &ContactWindows::rosterFormMade, &messages.hub, [this](RosterForm& form) {
        form.findChild<QMenu*>(QStringLiteral("mRosterFriends"))
            ->addMenu(new ConversationMenu(messages.hub, &form));
        contacts.setUnread(messages.hub.unread.peers());
    });
    QObject::connect(&messages.hub, &ChatWindow::vCardRequested, &messages,
                     [this](const QString& jid) { services.vCards.RequestVCard(jid); });
    QObject::connect(&messages.hub, &ChatWindow::callRequested, &messages, [this](MessageForm* asking) {
        const QPointer<MessageForm> window(asking);
        const QString word = services.calls.invite(asking->target());
        if (window)
            window->setPanelText(word);
    });
}

void Windows::wireRooms()
{
    QObject::connect(&contacts, &ContactWindows::groupChatRequested, &groups, &GroupWindows::showJoin);
    QObject::connect(&messages.hub, &ChatWindow::inviteRequested, &groups,
                     [this](const QString& jid) { groups.showInvite(jid, {}); });
    QObject::connect(&messages.hub, &ChatWindow::conferenceInvited, &groups, &GroupWindows::showInvitation);
    QObject::connect(&groups, &GroupWindows::told, &contacts, &ContactWindows::tell);
}

void Windows::wirePreferences()
{
    auto& signIn = session.signIn();
    QObject::connect(&preferences, &PreferenceWindows::applied, &signIn, &SignInForm::showSettings);
    QObject::connect(&preferences, &PreferenceWindows::applied, &signIn, &SignInForm::saveSettings);
    QObject::connect(&preferences, &PreferenceWindows::applied, &contacts,
                     &ContactWindows::refreshAppearance);
    QObject::connect(&preferences, &PreferenceWindows::defaultsRestored, &signIn, &SignInForm::showDefaults);
    QObject::connect(&preferences, &PreferenceWindows::blockedListChanged, &contacts,
                     &ContactWindows::refreshAppearance);
    QObject::connect(&preferences, &PreferenceWindows::messageRequested, &messages,
                     [this](const QString& jid) { messages.openConversation(jid, true); });
    QObject::connect(&preferences, &PreferenceWindows::onTopChanged, &contacts, &ContactWindows::applyOnTop);
}

void Windows::wireSignIn()
{
    auto& signIn = session.signIn();
    QObject::connect(&signIn, &SignInForm::connecting, &contacts,
                     [this] { contacts.makeRosterForm().Roster1->StartLoginTimer(); });
    QObject::connect(&signIn, &SignInForm::preferencesRequested, &preferences,
                     [this] { preferences.show(QStringLiteral("Personal")); });
}
