#pragma once

#include <QString>

// What the dispatch of stanzas asks of the windows, beside passing stanzas on.
class SessionSteps
{
public:
    virtual ~SessionSteps() = default;

    // Whether the contact list of this session has been set up.
    virtual bool isInitiated() const = 0;
    // The first of the two lists has come: the main window takes the screen. `progressLine` is added to the
    // progress window.
    virtual void firstContact(const QString& progressLine) = 0;
    // The server keeps the contact list to itself, for this reason.
    virtual void listRefused(const QString& reason) = 0;
    // A list after the first has come: the progress window goes.
    virtual void finishSignIn() = 0;
    // The progress window goes and the sign-in window comes back.
    virtual void backToSignIn() = 0;
    // Connects with what stands in the sign-in window.
    virtual void connectAgain() = 0;

    virtual QString userName() const = 0;
    virtual QString password() const = 0;

    virtual void removeContact(const QString& bareJid) = 0;
    virtual void showAdminMenu(const QString& server) = 0;
    // A line of the client's own in the notices window.
    virtual void writeNotice(const QString& from, const QString& body, const QString& subject) = 0;
};
