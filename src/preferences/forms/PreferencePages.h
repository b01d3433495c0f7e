#pragma once

#include <QString>

#include <memory>
#include <vector>

class QWidget;
class SettingsStore;
struct Client;

// One category of the preferences.
struct PreferencePage {
    QString key;    // the node's text as well
    QString parent; // empty at the top level
    std::unique_ptr<QWidget> (*make)(Client& client, SettingsStore& store);
    bool ofAdministrators = false; // nobody else has it

    // The person's own pages: they take part in saving.
    bool isPersonal() const;
};

namespace preferences
{

// The categories in the order in which they are shown.
const std::vector<PreferencePage>& pages();
// Null for an unknown key.
const PreferencePage* page(const QString& key);

} // namespace preferences
