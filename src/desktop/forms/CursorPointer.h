#pragma once

#include "desktop/Desktop.h"

// The mouse pointer, in logical pixels of the whole desktop.
class CursorPointer : public Pointer
{
public:
    QPoint position() const override;
};
