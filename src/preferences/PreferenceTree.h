#pragma once

#include <QString>

#include <vector>

// One category of the preferences.
struct PreferenceNode {
    QString key;    // the node's text as well
    QString parent; // empty at the top level
    // The class of its panel.
    QString panel;
    // Panels of the personal group take part in saving.
    bool personal = false;
};

namespace preferences
{

// The categories in the order in which they are shown.
const std::vector<PreferenceNode>& categories();

// The name of the panel instance with this running number. Its end tells the personal group from the others.
QString panelName(int number, bool personal);
// Whether the panel of this name takes part in saving.
bool isPersonal(const QString& panelName);

} // namespace preferences
