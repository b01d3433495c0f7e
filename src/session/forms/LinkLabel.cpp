#include "session/forms/LinkLabel.h"

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

void LinkLabel::show(bool highlighted)
{
    QFont underlined = font();
    underlined.setUnderline(highlighted);
    setFont(underlined);
    QPalette colours = parentWidget() ? parentWidget()->palette() : QPalette();
    const QColor colour = highlighted ? highlight : resting_;
    if (colour.isValid())
        colours.setColor(QPalette::WindowText, colour);
    setPalette(colours);
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
