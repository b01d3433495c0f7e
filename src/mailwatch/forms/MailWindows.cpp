#include "mailwatch/forms/MailWindows.h"

#include "mailwatch/forms/Logon.h"

#include <utility>

MailWindows::MailWindows(FormRegistry& registry, Client& client, SettingsStore& store)
    : registry_(registry), client_(client), store_(store)
{
}

void MailWindows::StartMailWatcher()
{
    registry_
        .single<Logon>(QStringLiteral("Logon"),
                       [this] {
                           auto* form = new Logon(registry_, client_, store_, farewells_);
                           connect(form, &Logon::leaving, this,
                                   [this](const MailLogin& typed) { typed_ = typed; });
                           return form;
                       })
        .Initialize(std::exchange(typed_, std::nullopt));
}
