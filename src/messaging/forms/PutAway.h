#pragma once

#include "desktop/forms/Form.h"
#include "messaging/WindowTag.h"

// Hides a window that will come back; its Tag keeps the place.
inline void putAway(Form& form)
{
    form.hide();
    form.Tag = windowtag::of(form.place());
}
