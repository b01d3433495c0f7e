#pragma once

#include <QColor>
#include <QLabel>

// A label that acts as a link: it is coloured and underlined under the mouse or the focus, and a click, Enter
// or Space activates it.
class LinkLabel : public QLabel
{
    Q_OBJECT

public:
    explicit LinkLabel(QWidget* parent = nullptr);

    // The colour away from the mouse where the background is light; on a dark one it is the palette's link
    // colour. Without a call it is the palette's text colour.
    void setRestingColour(const QColor& colour);

signals:
    void activated();

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void show(bool highlighted);
    QColor restingColour() const;

    QColor resting_;
    bool highlighted_ = false;
};
