#pragma once

#include <memory>

class PreferencePanel;
class QString;
struct Client;

namespace preferences
{

// A new panel of the class of this name; null for an unknown one.
std::unique_ptr<PreferencePanel> makePanel(const QString& className, Client& client);

} // namespace preferences
