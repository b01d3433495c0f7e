#pragma once

#include <QString>

#include <memory>
#include <optional>

// Keeps passwords outside of the settings file. Without one they stand in the file, which only its owner can
// read.
class SecretStore
{
public:
    virtual ~SecretStore() = default;
    // Null when no store answers; an empty text when it holds no password for the account.
    virtual std::optional<QString> read(const QString& account) = 0;
    // False when the store did not take it.
    virtual bool write(const QString& account, const QString& password) = 0;
};

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
