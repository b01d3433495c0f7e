#pragma once

#include <QPoint>
#include <QString>

// A window's place as its Tag keeps it: left and top in twips, joined by "|".
namespace windowtag
{

constexpr int twipsPerPixel = 15; // logical pixels

QString of(QPoint pixels);
// Twips; 0 when the tag holds no such number.
int left(const QString& tag);
int top(const QString& tag);

} // namespace windowtag
