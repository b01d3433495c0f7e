#include "preferences/forms/PreferenceWindows.h"

#include "contacts/Client.h"
#include "desktop/forms/Form.h"
#include "preferences/forms/PreferencePages.h"
#include "preferences/forms/PreferencesForm.h"
#include "preferences/forms/RestoreRegForm.h"
#include "settings/SettingsStore.h"

PreferenceWindows::PreferenceWindows(FormRegistry& registry, Client& client, SettingsStore& store)
    : registry_(registry), client_(client), store_(store)
{
}

PreferencesForm& PreferenceWindows::form()
{
    return registry_.single<PreferencesForm>(QStringLiteral("PreferencesForm"), [this] {
        auto* made = new PreferencesForm(registry_, client_, store_);
        connect(made, &PreferencesForm::applied, this, &PreferenceWindows::applied);
        connect(made, &PreferencesForm::blockedListChanged, this, &PreferenceWindows::blockedListChanged);
        connect(made, &PreferencesForm::onTopChanged, this, &PreferenceWindows::onTopChanged);
        connect(made, &PreferencesForm::restoreRequested, this, &PreferenceWindows::askRestore);
        return made;
    });
}

void PreferenceWindows::show(const QString& page)
{
    if (!preferences::page(page))
        return emit pageMissing(page);
    form().showPage(page);
    form().bringUp();
}

void PreferenceWindows::askRestore()
{
    auto& question = registry_.single<RestoreRegForm>(QStringLiteral("RestoreRegForm"), [this] {
        auto* made = new RestoreRegForm(registry_);
        connect(made, &RestoreRegForm::confirmed, this, &PreferenceWindows::restoreDefaults);
        return made;
    });
    question.showAbove(form());
}

// The preferences show the new values from the start.
void PreferenceWindows::restoreDefaults()
{
    const QString page = form().currentPage();
    const QRect place = form().geometry();
    form().requestUnload(CloseMode::Code);
    SettingsStore::LoadDefaults(client_.settings, client_.site);
    emit applied();
    emit defaultsRestored();
    form().setGeometry(place);
    show(page);
}
