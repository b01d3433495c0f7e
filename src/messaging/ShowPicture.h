#pragma once

#include <QStringView>

#include <optional>

// The position in the shared image list of the picture for a presence's show word; null for a word unknown.
inline std::optional<int> pictureOfShow(QStringView show)
{
    if (show.isEmpty())
        return 6;
    if (show == u"away")
        return 2;
    if (show == u"xa")
        return 10;
    if (show == u"dnd")
        return 3;
    return show == u"chat" ? std::optional(23) : std::nullopt;
}
