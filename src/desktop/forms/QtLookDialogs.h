#pragma once

#include "desktop/Desktop.h"

// The desktop's own colour and font dialogs, on top of the active window.
class QtLookDialogs : public LookDialogs
{
public:
    std::optional<int> colour(int current) override;
    std::optional<FontChoice> font(const FontChoice& current) override;
};
