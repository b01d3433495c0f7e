#include "desktop/forms/WindowPlace.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace windowplace
{

std::optional<QPoint> onAScreen(const QRect& frame, const QList<QRect>& screens)
{
    const auto shown = [&frame](const QRect& screen) {
        const QSize part = screen.intersected(frame).size();
        return qint64(part.width()) * part.height();
    };
    const auto most = std::max_element(screens.begin(), screens.end(),
                                       [&](const QRect& a, const QRect& b) { return shown(a) < shown(b); });
    if (most == screens.end() || shown(*most) == 0)
        return std::nullopt;
    const QSize spare = (most->size() - frame.size()).expandedTo(QSize(0, 0));
    return QPoint(std::clamp(frame.x(), most->x(), most->x() + spare.width()),
                  std::clamp(frame.y(), most->y(), most->y() + spare.height()));
}

QList<QRect> screens()
{
    QList<QRect> usable;
    for (const auto* screen : QGuiApplication::screens())
        usable += screen->availableGeometry();
    return usable;
}

} // namespace windowplace
