#include "settings/SecretStore.h"

#include "settings/Module.h"

#include <QFileInfo>

namespace
{

// Keyrings are reached through the session bus; without one the libraries would search for it at length.
bool hasSessionBus()
{
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtime.isEmpty() && QFileInfo::exists(runtime + QStringLiteral("/bus"));
}

} // namespace

SecretStore* KeychainSecretStore::keyring()
{
    if (!asked_ && hasSessionBus())
        keyring_ = module::make<SecretStore>(QStringLiteral("breloim_keychain"));
    asked_ = true;
    return keyring_.get();
}

std::optional<QString> KeychainSecretStore::read(const QString& account)
{
    return keyring() ? keyring()->read(account) : std::nullopt;
}

bool KeychainSecretStore::write(const QString& account, const QString& password)
{
    return keyring() && keyring()->write(account, password);
}
