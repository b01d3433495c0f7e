#pragma once

#include "settings/SecretStore.h"

#include <QHash>

// A keyring in memory. While it is locked it takes and tells nothing.
struct RecordingSecrets : SecretStore {
    QHash<QString, QString> passwords;
    bool locked = false;

    std::optional<QString> read(const QString& account) override
    {
        return locked ? std::nullopt : std::optional(passwords.value(account));
    }
    bool write(const QString& account, const QString& password) override
    {
        if (!locked)
            passwords.insert(account, password);
        return !locked;
    }
};
