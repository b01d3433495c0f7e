#include "services/forms/RequiredMark.h"

#include <QCoreApplication>
#include <QLineEdit>

namespace
{

constexpr QColor warning(220, 30, 30);

// The palette's own colour with a part of red: it stays as light or dark as it was.
QColor tinted(const QColor& base)
{
    constexpr float part = 0.3F;
    const auto mix = [](float from, float to) { return from + (to - from) * part; };
    return QColor::fromRgbF(mix(base.redF(), warning.redF()), mix(base.greenF(), warning.greenF()),
                            mix(base.blueF(), warning.blueF()));
}

void unmark(QLineEdit& field)
{
    field.setPalette({});
    field.setPlaceholderText({});
    field.setAccessibleDescription({});
}

} // namespace

void markRequired(QLineEdit& field)
{
    const QString word = QCoreApplication::translate("RequiredMark", "Required");
    if (field.placeholderText() == word)
        return;
    QPalette palette;
    palette.setColor(QPalette::Base, tinted(field.palette().color(QPalette::Base)));
    field.setPalette(palette);
    field.setPlaceholderText(word);
    field.setAccessibleDescription(word);
    QObject::connect(
        &field, &QLineEdit::textChanged, &field, [&field] { unmark(field); }, Qt::SingleShotConnection);
}
