#include "realdesktop/XDisplay.h"

#include <QDeadlineTimer>
#include <QThread>

#include <xcb/xtest.h>

#include <cstdlib>

namespace
{

template <typename T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

template <typename T>
Reply<T> owned(T* reply)
{
    return {reply, &std::free};
}

} // namespace

XDisplay::XDisplay() : connection_(xcb_connect(nullptr, nullptr), &xcb_disconnect)
{
    if (xcb_connection_has_error(x()))
        qFatal("no X display");
    root_ = xcb_setup_roots_iterator(xcb_get_setup(x())).data->root;
    readKeyboard();
}

// Of each key the plain sign and the one with Shift.
void XDisplay::readKeyboard()
{
    const auto* setup = xcb_get_setup(x());
    const auto first = setup->min_keycode;
    const auto asked = xcb_get_keyboard_mapping(x(), first, quint8(setup->max_keycode - first + 1));
    const auto reply = owned(xcb_get_keyboard_mapping_reply(x(), asked, nullptr));
    const auto* signs = xcb_get_keyboard_mapping_keysyms(reply.get());
    const int each = reply->keysyms_per_keycode;
    for (int key = xcb_get_keyboard_mapping_keysyms_length(reply.get()) / each - 1; key >= 0; --key) {
        keys_.insert(signs[key * each + 1], {quint8(first + key), true});
        keys_.insert(signs[key * each], {quint8(first + key), false});
    }
}

quint32 XDisplay::atom(const char* name) const
{
    const auto asked = xcb_intern_atom(x(), false, quint16(qstrlen(name)), name);
    const auto reply = owned(xcb_intern_atom_reply(x(), asked, nullptr));
    return reply ? reply->atom : 0;
}

QByteArray XDisplay::property(Window window, const char* name) const
{
    const auto asked = xcb_get_property(x(), 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 4096);
    const auto reply = owned(xcb_get_property_reply(x(), asked, nullptr));
    return reply ? QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                              xcb_get_property_value_length(reply.get()))
                 : QByteArray();
}

QList<quint32> XDisplay::numbers(Window window, const char* name) const
{
    const QByteArray value = property(window, name);
    const auto* first = reinterpret_cast<const quint32*>(value.constData());
    return {first, first + value.size() / 4};
}

bool XDisplay::hasTray() const
{
    const auto asked = xcb_get_selection_owner(x(), atom("_NET_SYSTEM_TRAY_S0"));
    const auto reply = owned(xcb_get_selection_owner_reply(x(), asked, nullptr));
    return reply && reply->owner;
}

// Every window can be embedded; this one is, and so it is neither managed nor a balloon.
XDisplay::Window XDisplay::trayIcon() const
{
    return seen(root_, [this](Window window, Window parent) {
        return parent != root_ && state(window) == State::Withdrawn &&
               !property(window, "_XEMBED_INFO").isEmpty();
    });
}

// Of the unmanaged windows, the others say that they are tool tips.
XDisplay::Window XDisplay::menu() const
{
    const auto plain = atom("_NET_WM_WINDOW_TYPE_NORMAL");
    return seen(root_, [this, plain](Window window, Window parent) {
        return parent == root_ && state(window) == State::Withdrawn &&
               numbers(window, "_NET_WM_WINDOW_TYPE").contains(plain);
    });
}

XDisplay::Window XDisplay::seen(Window below, const std::function<bool(Window, Window)>& is) const
{
    const auto tree = owned(xcb_query_tree_reply(x(), xcb_query_tree(x(), below), nullptr));
    const auto* children = tree ? xcb_query_tree_children(tree.get()) : nullptr;
    for (int i = tree ? xcb_query_tree_children_length(tree.get()) : 0; i-- > 0;) {
        const auto asked = xcb_get_window_attributes(x(), children[i]);
        const auto looks = owned(xcb_get_window_attributes_reply(x(), asked, nullptr));
        const bool isSeen = looks && looks->map_state == XCB_MAP_STATE_VIEWABLE;
        if (isSeen && is(children[i], below))
            return children[i];
        if (const auto deeper = seen(children[i], is))
            return deeper;
    }
    return 0;
}

XDisplay::Window XDisplay::window(const QString& title) const
{
    const auto all = numbers(root_, "_NET_CLIENT_LIST");
    for (const auto window : all) {
        if (property(window, "_NET_WM_NAME").startsWith(title.toUtf8()))
            return window;
    }
    return 0;
}

QRect XDisplay::place(Window window) const
{
    const auto size = owned(xcb_get_geometry_reply(x(), xcb_get_geometry(x(), window), nullptr));
    const auto asked = xcb_translate_coordinates(x(), window, root_, 0, 0);
    const auto corner = owned(xcb_translate_coordinates_reply(x(), asked, nullptr));
    return size && corner ? QRect(corner->dst_x, corner->dst_y, size->width, size->height) : QRect();
}

QMargins XDisplay::frame(Window window) const
{
    const auto widths = numbers(window, "_NET_FRAME_EXTENTS"); // left, right, top, bottom
    return widths.size() == 4 ? QMargins(int(widths[0]), int(widths[2]), int(widths[1]), int(widths[3]))
                              : QMargins();
}

void XDisplay::command(Window window, const char* message, std::initializer_list<quint32> data)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(message);
    std::copy(data.begin(), data.end(), event.data.data32);
    const quint32 mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_send_event(x(), false, root_, mask, reinterpret_cast<const char*>(&event));
    xcb_flush(x());
}

// Events go out together, as slow hands make no double click.
void XDisplay::fake(quint8 event, quint8 detail, QPoint place)
{
    xcb_test_fake_input(x(), event, detail, XCB_CURRENT_TIME, root_, qint16(place.x()), qint16(place.y()), 0);
}

// Two quick clicks at one place would be taken for a double click.
void XDisplay::click(QPoint place, Button button, int times)
{
    aside_ = -aside_;
    fake(XCB_MOTION_NOTIFY, 0, place + QPoint(aside_, 0));
    for (int i = 0; i < times; ++i) {
        fake(XCB_BUTTON_PRESS, button);
        fake(XCB_BUTTON_RELEASE, button);
    }
    settle();
}

bool XDisplay::hasWindowManager()
{
    return !property(root_, "_NET_SUPPORTING_WM_CHECK").isEmpty() && isAnswered(100);
}

void XDisplay::settle()
{
    if (!isAnswered(10'000))
        qFatal("the window manager does not answer");
}

// It answers in order.
bool XDisplay::isAnswered(int patienceMs)
{
    const Window window = xcb_generate_id(x());
    xcb_create_window(x(), XCB_COPY_FROM_PARENT, window, root_, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, 0,
                      0, nullptr);
    command(window, "_NET_REQUEST_FRAME_EXTENTS", {});
    bool answered = false;
    for (QDeadlineTimer patience(patienceMs); !answered && !patience.hasExpired(); QThread::msleep(1))
        answered = !property(window, "_NET_FRAME_EXTENTS").isEmpty();
    xcb_destroy_window(x(), window);
    return answered;
}

void XDisplay::press(quint32 key, std::initializer_list<quint32> held)
{
    if (!keys_.contains(key))
        qFatal("no key for sign %x", key);
    QList<quint32> all(held);
    if (keys_[key].shifted)
        all += Shift;
    all += key;
    for (const auto one : all)
        fake(XCB_KEY_PRESS, keys_[one].code);
    for (qsizetype i = all.size(); i-- > 0;)
        fake(XCB_KEY_RELEASE, keys_[all[i]].code);
    xcb_flush(x());
}

void XDisplay::type(const QString& text)
{
    for (const QChar sign : text)
        press(sign.unicode());
}
