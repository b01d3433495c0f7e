#pragma once

#include <QString>

// Major, minor and revision joined by ".".
inline QString programVersion()
{
    return QStringLiteral(BRELO_VERSION);
}
