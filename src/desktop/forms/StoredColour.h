#pragma once

#include <QColor>

// Colours as the settings store them: 0xBBGGRR.
namespace storedcolour
{

inline QColor toColour(int stored)
{
    return {stored & 0xFF, (stored >> 8) & 0xFF, (stored >> 16) & 0xFF};
}

inline int fromColour(const QColor& colour)
{
    return colour.blue() << 16 | colour.green() << 8 | colour.red();
}

} // namespace storedcolour
