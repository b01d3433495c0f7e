#include "Display.h"

#include <xcb/xcb.h>

#include <poll.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

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

Display::Display()
{
    const QStringList arguments{QStringLiteral("-displayfd"),   QStringLiteral("1"),
                                QStringLiteral("-screen"),      QStringLiteral("0"),
                                QStringLiteral("1280x1024x24"), QStringLiteral("-nolisten"),
                                QStringLiteral("tcp"),          QStringLiteral("-noreset")};
    server_ =
        std::make_unique<Child>(QStringLiteral("Xvfb"), arguments, QProcessEnvironment::systemEnvironment());
    if (!server_->process().waitForReadyRead(10'000))
        throw std::runtime_error("Xvfb does not start");
    name_ = u':' + QString::fromLatin1(server_->process().readLine()).trimmed();
    connection_ = xcb_connect(name_.toLatin1().constData(), nullptr);
    if (xcb_connection_has_error(connection_))
        throw std::runtime_error("Xvfb does not answer");
    const quint32 root = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    const quint32 mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_, root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(connection_);
}

Display::~Display()
{
    xcb_disconnect(connection_);
}

void Display::awaitWindow(const QByteArray& title)
{
    QElapsedTimer patience;
    patience.start();
    while (patience.elapsed() < 60'000) {
        readEvents(20);
        if (std::any_of(mapped_.cbegin(), mapped_.cend(), [&](quint32 w) { return hasTitle(w, title); }))
            return;
    }
    throw std::runtime_error("no window \"" + title.toStdString() + "\" appears");
}

void Display::readEvents(int waitMs)
{
    pollfd socket{xcb_get_file_descriptor(connection_), POLLIN, 0};
    auto event = owned(xcb_poll_for_event(connection_));
    if (!event) {
        poll(&socket, 1, waitMs);
        event = owned(xcb_poll_for_event(connection_));
    }
    for (; event; event = owned(xcb_poll_for_event(connection_))) {
        if ((event->response_type & 0x7f) == XCB_MAP_NOTIFY)
            mapped_ += reinterpret_cast<const xcb_map_notify_event_t*>(event.get())->window;
    }
}

bool Display::hasTitle(quint32 window, const QByteArray& title) const
{
    const auto asked =
        xcb_get_property(connection_, 0, window, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY, 0, 64);
    const auto reply = owned(xcb_get_property_reply(connection_, asked, nullptr));
    if (!reply)
        return false;
    const auto* text = static_cast<const char*>(xcb_get_property_value(reply.get()));
    return QByteArrayView(text, xcb_get_property_value_length(reply.get())).startsWith(title);
}
