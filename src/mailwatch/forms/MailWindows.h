#pragma once

#include "mailwatch/Farewells.h"
#include "settings/MailLogin.h"

#include <QObject>

#include <optional>

class FormRegistry;
class SettingsStore;
struct Client;

// The room's face: the mail watcher's window, made at first use. Its end gives the server a moment to end the
// subscription.
class MailWindows : public QObject
{
    Q_OBJECT

public:
    // All must outlive the object.
    MailWindows(FormRegistry& registry, Client& client, SettingsStore& store);

    // Asks for the mailbox, or brings up the window of the watch that runs.
    void StartMailWatcher();

private:
    FormRegistry& registry_;
    Client& client_;
    SettingsStore& store_;
    Farewells farewells_;
    std::optional<MailLogin> typed_; // in the window that went, and not seen since
};
