#pragma once

#include <QObject>

#include <functional>
#include <memory>

class ChatWindow;
class FormRegistry;
class HeadLineForm;
class LoggingInForm;
class PreferencesForm;
class Roster;
class RosterForm;
class SettingsStore;
class SignInForm;
class VCardWindows;
struct Client;

// The session's windows, each made at first use, and the wires between rooms that don't know each other.
class Windows : public QObject
{
    Q_OBJECT

public:
    Windows(FormRegistry& registry, Client& client, SettingsStore& store);
    ~Windows() override;

    // Lives for the whole run.
    SignInForm& signIn() const { return *signIn_; }
    // The hub of the conversations; lives for the whole run.
    ChatWindow& hub() const { return *hub_; }

    VCardWindows& vCards() const { return *vCards_; }

    // The main window, or null when it isn't loaded.
    RosterForm* rosterForm() const;
    // The contact list of the main window, or null when that isn't loaded.
    Roster* roster() const;
    RosterForm& makeRosterForm();

    LoggingInForm* progressIfLoaded() const;
    LoggingInForm& progress();
    HeadLineForm& notices();
    void showAbout();
    void showInTray();
    // A page of the product's site; says so where no site is configured.
    void openPage(const QString& path);
    // The preferences on this page; says so where there is no such page.
    void showPreferences(const QString& page);
    // A window that isn't there yet is asked for: says so.
    void notThereYet(const QString& what);
    void openConversation(const QString& jid, bool trick);

    FormRegistry& registry() const { return registry_; }

signals:
    void rosterFormMade(RosterForm& form);
    void cancelRequested();
    void connectionLost();

private:
    void wireHub();
    void wireRosterForm(RosterForm& form);
    PreferencesForm& preferences();
    void preferencesApplied();
    void refreshRoster();
    void askRestore();
    void restoreDefaults();

    FormRegistry& registry_;
    Client& client_;
    std::unique_ptr<ChatWindow> hub_;
    std::unique_ptr<VCardWindows> vCards_;
    std::unique_ptr<SignInForm> signIn_;
};
