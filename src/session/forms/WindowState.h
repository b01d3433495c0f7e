#pragma once

#include <QWidget>

// The state of a window as it is stored: 0 normal, 1 minimised, 2 maximised.
inline int windowState(const QWidget& window)
{
    if (window.isMinimized())
        return 1;
    return window.isMaximized() ? 2 : 0;
}

inline void setWindowState(QWidget& window, int state)
{
    const auto states = window.windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized);
    window.setWindowState(state == 1   ? states | Qt::WindowMinimized
                          : state == 2 ? states | Qt::WindowMaximized
                                       : states);
}
