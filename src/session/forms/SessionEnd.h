#pragma once

#include <QObject>

class SettingsStore;
class Windows;
struct Client;

// The ways in which a session ends: back to the sign-in window, a cancelled or refused sign-in, a lost
// connection, and the end of the program.
class SessionEnd : public QObject
{
    Q_OBJECT

public:
    SessionEnd(Client& client, Windows& windows, SettingsStore& store);

    void returnToSignIn();
    void cancelSignIn();
    // The progress window goes and the sign-in window comes back.
    void backToSignIn();
    // The contact list goes, and the main window says why: `reason` is a sentence, or empty.
    void connectionLost(const QString& reason);
    // The tray shows that there is no session.
    void signedOut();
    void exitProgram();

signals:
    // The session is over: the tray follows, and a question about it is withdrawn.
    void ended();

private:
    void saveWindowPosition();
    void emptyLists();
    void showSignIn();

    Client& client_;
    Windows& windows_;
    SettingsStore& store_;
};
