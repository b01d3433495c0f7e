#pragma once

#include "contacts/Client.h"
#include "desktop/forms/Form.h"
#include "preferences/forms/PreferencePanel.h"
#include "preferences/forms/PreferencesForm.h"
#include "settings/Paths.h"
#include "settings/SettingsStore.h"
#include "support/Files.h"
#include "support/RecordingDesktop.h"
#include "support/Table.h"
#include "support/TempProfile.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

// The preferences on settings of their own, shown.
struct PreferencesFixture {
    explicit PreferencesFixture(const Settings& settings = {})
    {
        client.settings = settings;
        client.desktop = outside.desktop();
        open();
    }
    ~PreferencesFixture() { registry.deleteAllExcept(nullptr); }

    void open()
    {
        form = new PreferencesForm(registry, client, store);
        form->show();
    }
    bool isOpen() const { return registry.isLoaded(form); }
    // Chooses the category and yields its panel.
    QWidget* page(const QString& key)
    {
        form->showPage(key);
        return form->currentPage() == key ? form->panel(key) : nullptr;
    }

    TempProfile profile;
    RecordingDesktop outside;
    SettingsStore store{profile.path() + "/its own.ini"};
    Client client;
    FormRegistry registry;
    PreferencesForm* form = nullptr;
};
