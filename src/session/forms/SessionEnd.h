#pragma once

#include <QObject>

class SettingsStore;
class Windows;
struct Client;

// The ways in which a session ends: back to the sign-in window, a cancelled sign-in, a lost connection, and
// the end of the program.
class SessionEnd : public QObject
{
    Q_OBJECT

public:
    SessionEnd(Client& client, Windows& windows, SettingsStore& store);

    void returnToSignIn();
    void cancelSignIn();
    void connectionLost();
    void exitProgram();

signals:
    // The session is over; the tray follows.
    void ended();

private:
    void saveWindowPosition();
    void emptyLists();
    void showSignIn();

    Client& client_;
    Windows& windows_;
    SettingsStore& store_;
};
