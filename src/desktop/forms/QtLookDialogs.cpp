#include "desktop/forms/QtLookDialogs.h"

#include "desktop/forms/StoredColour.h"

#include <QApplication>
#include <QColorDialog>
#include <QFontDialog>

std::optional<int> QtLookDialogs::colour(int current)
{
    const QColor chosen =
        QColorDialog::getColor(storedcolour::toColour(current), QApplication::activeWindow());
    return chosen.isValid() ? std::optional(storedcolour::fromColour(chosen)) : std::nullopt;
}

std::optional<FontChoice> QtLookDialogs::font(const FontChoice& current)
{
    // A family that isn't here is shown as what stands in for it.
    QFont initial(QFontInfo(QFont(current.name)).family());
    initial.setPointSizeF(current.size);
    initial.setBold(current.bold);
    initial.setItalic(current.italic);
    bool accepted = false;
    const QFont chosen = QFontDialog::getFont(&accepted, initial, QApplication::activeWindow());
    if (!accepted || chosen == initial)
        return std::nullopt;
    return FontChoice{chosen.family(), chosen.pointSizeF(), chosen.bold(), chosen.italic()};
}
