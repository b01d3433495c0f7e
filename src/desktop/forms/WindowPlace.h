#pragma once

#include <QList>
#include <QRect>

#include <optional>

// Where a window may stand. All rectangles are frames, in logical pixels.
namespace windowplace
{

// The nearest place at which the frame lies wholly on the screen that shows most of it; one that is too big
// keeps its upper left corner there. Null when no screen shows any of it.
std::optional<QPoint> onAScreen(const QRect& frame, const QList<QRect>& screens);
// The usable part of each screen.
QList<QRect> screens();

} // namespace windowplace
