#pragma once

#include "settings/SecretStore.h"

namespace QKeychain
{
class Job;
}

// The desktop's keyring by QtKeychain. A question waits in a nested event loop, so that a box of the
// keyring's own can ask the person to unlock it.
class QtKeychainStore : public SecretStore
{
public:
    std::optional<QString> read(const QString& account) override;
    bool write(const QString& account, const QString& password) override;

private:
    // Starts the job, which deletes itself when it ends, and waits. False when it didn't end in time.
    bool run(QKeychain::Job* job);

    // A keyring that kept silent once isn't asked again in this run.
    bool silent_ = false;
};
