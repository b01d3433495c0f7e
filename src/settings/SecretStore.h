#pragma once

#include <QString>

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
