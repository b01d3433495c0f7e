#pragma once

#include "desktop/Desktop.h"

// Boxes over the active window. Their texts are plain, whatever they hold.
class QtMessageBoxes : public MessageBoxes
{
public:
    Answer show(const QString& title, const QString& text, Icon icon, Buttons buttons) override;
    std::optional<QString> input(const QString& title, const QString& prompt, const QString& preset) override;
};
