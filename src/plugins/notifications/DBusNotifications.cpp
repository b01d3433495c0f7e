#include "plugins/notifications/DBusNotifications.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace
{

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");

} // namespace

DBusNotifications::DBusNotifications()
{
    QDBusConnection::sessionBus().connect(service, path, service, QStringLiteral("ActionInvoked"), this,
                                          SLOT(onAction(uint, QString)));
}

// The action "default" is a click on the notice itself.
bool DBusNotifications::show(const Balloon& balloon)
{
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return false;
    auto call = QDBusMessage::createMethodCall(service, path, service, QStringLiteral("Notify"));
    const QStringList actions{QStringLiteral("default"), tr("Open")};
    const QVariantMap hints{{QStringLiteral("desktop-entry"), QStringLiteral("breloim")}};
    call.setArguments({QStringLiteral("BreloIM"), id_, QStringLiteral("breloim"), balloon.title, balloon.text,
                       actions, hints, balloon.milliseconds});
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<uint> reply = *watcher;
        id_ = reply.isValid() ? reply.value() : 0;
        watcher->deleteLater();
    });
    return true;
}

void DBusNotifications::onAction(uint id, const QString&)
{
    if (id == id_ && clicked)
        clicked();
}

extern "C" Q_DECL_EXPORT void* breloMake()
{
    return static_cast<NotificationService*>(new DBusNotifications);
}
