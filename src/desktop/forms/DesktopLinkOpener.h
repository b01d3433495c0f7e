#pragma once

#include "desktop/Desktop.h"

// Hands safe links to the desktop's handlers.
class DesktopLinkOpener : public LinkOpener
{
public:
    bool open(const QString& link) override;
};
