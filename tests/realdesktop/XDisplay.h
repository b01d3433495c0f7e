#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QRect>
#include <QString>

#include <functional>
#include <initializer_list>
#include <memory>

struct xcb_connection_t;

// The X display as its window manager has it: windows known by their properties and commanded by messages,
// and a real pointer and keyboard. It tells what holds at the moment; a window that isn't there is 0.
class XDisplay
{
public:
    using Window = quint32;
    enum class State { Withdrawn = 0, Normal = 1, Iconic = 3 };
    enum Button : quint8 { Left = 1, Middle, Right };
    enum Key : quint32 {
        Tab = 0xff09,
        Return = 0xff0d,
        Escape = 0xff1b,
        Up = 0xff52,
        Down = 0xff54,
        Shift = 0xffe1,
        Control = 0xffe3,
        Alt = 0xffe9
    };

    // The display of the environment.
    XDisplay();

    // Whether one has finished its start.
    bool hasWindowManager();
    // Whether somebody keeps a notification area, and the icon that is seen there.
    bool hasTray() const;
    Window trayIcon() const;
    // An open menu of a tray icon or a control.
    Window menu() const;

    // The window, iconic ones too, whose title begins with `title`.
    Window window(const QString& title) const;
    Window active() const { return numbers(root_, "_NET_ACTIVE_WINDOW").value(0); }
    State state(Window window) const { return State(numbers(window, "WM_STATE").value(0)); }
    // Whether it asks to be looked at.
    bool isUrgent(Window window) const
    {
        return numbers(window, "_NET_WM_STATE").contains(atom("_NET_WM_STATE_DEMANDS_ATTENTION"));
    }
    // On the screen, without the frame; and the frame around it.
    QRect place(Window window) const;
    QMargins frame(Window window) const;

    // As the window manager does it for a person.
    void close(Window window) { command(window, "_NET_CLOSE_WINDOW", {0, 2}); }
    void minimise(Window window) { command(window, "WM_CHANGE_STATE", {quint32(State::Iconic)}); }
    void maximise(Window window, bool on = true)
    {
        command(window, "_NET_WM_STATE",
                {on, atom("_NET_WM_STATE_MAXIMIZED_HORZ"), atom("_NET_WM_STATE_MAXIMIZED_VERT"), 2});
    }
    void activate(Window window) { command(window, "_NET_ACTIVE_WINDOW", {2}); }
    // The frame's corner goes to this place.
    void move(Window window, quint32 left, quint32 top)
    {
        command(window, "_NET_MOVERESIZE_WINDOW", {2 << 12 | 3 << 8 | 1, left, top});
    }

    // The window manager has seen all that was done before. It sees clicks before the window does, but not
    // keys: a click waits for it.
    void settle();
    void click(QPoint place, Button button = Left, int times = 1);
    // One key, a sign's code or one of those above, while others are held.
    void press(quint32 key, std::initializer_list<quint32> held = {});
    void type(const QString& text);

private:
    struct Place {
        quint8 code;
        bool shifted;
    };

    xcb_connection_t* x() const { return connection_.get(); }
    void readKeyboard();
    bool isAnswered(int patienceMs);
    quint32 atom(const char* name) const;
    QByteArray property(Window window, const char* name) const;
    QList<quint32> numbers(Window window, const char* name) const;
    // The first window that is seen, from the front, of which `is` holds; it is asked with its parent.
    Window seen(Window below, const std::function<bool(Window, Window)>& is) const;
    void command(Window window, const char* message, std::initializer_list<quint32> data);
    void fake(quint8 event, quint8 detail, QPoint place = {});

    std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> connection_;
    Window root_ = 0;
    int aside_ = 3;
    QHash<quint32, Place> keys_;
};
