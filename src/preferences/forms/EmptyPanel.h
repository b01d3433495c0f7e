#pragma once

#include "preferences/forms/PreferencePanel.h"

// A category without settings: its heading stands on the form.
class EmptyPanel : public PreferencePanel
{
    Q_OBJECT

public:
    explicit EmptyPanel(Client& client);
};
