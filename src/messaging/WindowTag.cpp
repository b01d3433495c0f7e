#include "messaging/WindowTag.h"

#include <optional>

namespace windowtag
{
namespace
{

std::optional<int> number(const QString& text)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    return ok ? std::optional(value) : std::nullopt;
}

std::optional<int> part(const QString& tag, bool first)
{
    const auto bar = tag.indexOf(u'|');
    if (bar < 0)
        return std::nullopt;
    return number(first ? tag.left(bar) : tag.mid(bar + 1));
}

} // namespace

QString of(QPoint pixels)
{
    return QString::number(pixels.x() * twipsPerPixel) + u'|' + QString::number(pixels.y() * twipsPerPixel);
}

int left(const QString& tag)
{
    return part(tag, true).value_or(0);
}
int top(const QString& tag)
{
    return part(tag, false).value_or(0);
}

} // namespace windowtag
