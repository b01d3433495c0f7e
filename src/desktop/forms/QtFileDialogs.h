#pragma once

#include "desktop/Desktop.h"

// The desktop's own file dialogs, on top of the active window.
class QtFileDialogs : public FileDialogs
{
public:
    QString openFile(const QString& title, const QString& filter) override;
};
