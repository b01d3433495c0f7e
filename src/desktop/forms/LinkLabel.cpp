#include "desktop/forms/LinkLabel.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

namespace
{

const QColor highlight(0x55, 0x7E, 0xBA);

} // namespace

LinkLabel::LinkLabel(QWidget* parent) : QLabel(parent)
{
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
}

void LinkLabel::setRestingColour(const QColor& colour)
{
    resting_ = colour;
    show(false);
}

QColor LinkLabel::restingColour() const
{
    constexpr int readableLightness = 170; // of 255, on a dark background
    const QPalette around = parentWidget() ? parentWidget()->palette() : QApplication::palette();
    if (!resting_.isValid())
        return around.color(QPalette::WindowText);
    if (around.color(QPalette::Window).lightness() >= 128)
        return resting_;
    const QColor link = around.color(QPalette::Link);
    return QColor::fromHsl(link.hslHue(), link.hslSaturation(), qMax(link.lightness(), readableLightness));
}

void LinkLabel::show(bool highlighted)
{
    highlighted_ = highlighted;
    QFont underlined = font();
    underlined.setUnderline(highlighted);
    setFont(underlined);
    QPalette colours;
    colours.setColor(QPalette::WindowText, highlighted ? highlight : restingColour());
    setPalette(colours);
}

// The window went from light to dark or back.
void LinkLabel::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    const bool isStale = event->type() == QEvent::PaletteChange && !highlighted_ &&
                         palette().color(QPalette::WindowText) != restingColour();
    if (isStale)
        show(false);
}

void LinkLabel::enterEvent(QEnterEvent* event)
{
    show(true);
    QLabel::enterEvent(event);
}

void LinkLabel::leaveEvent(QEvent* event)
{
    show(hasFocus());
    QLabel::leaveEvent(event);
}

void LinkLabel::focusInEvent(QFocusEvent* event)
{
    show(true);
    QLabel::focusInEvent(event);
}

void LinkLabel::focusOutEvent(QFocusEvent* event)
{
    show(underMouse());
    QLabel::focusOutEvent(event);
}

void LinkLabel::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        emit activated();
}

void LinkLabel::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space)
        emit activated();
    else
        QLabel::keyPressEvent(event);
}
