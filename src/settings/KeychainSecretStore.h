#pragma once

#include "settings/SecretStore.h"

#include <memory>

// The desktop's keyring. Its libraries are loaded at the first question. Where no keyring can answer (no
// session bus, no keyring service, the module isn't installed) every question is answered at once.
class KeychainSecretStore : public SecretStore
{
public:
    std::optional<QString> read(const QString& account) override;
    bool write(const QString& account, const QString& password) override;

private:
    SecretStore* keyring();

    bool asked_ = false;
    std::unique_ptr<SecretStore> keyring_;
};
