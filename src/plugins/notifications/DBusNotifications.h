#pragma once

#include "desktop/NotificationService.h"

#include <QObject>

// org.freedesktop.Notifications on the session bus. A newer notice replaces the former one.
class DBusNotifications : public QObject, public NotificationService
{
    Q_OBJECT

public:
    DBusNotifications();
    bool show(const Balloon& balloon) override;

private slots:
    void onAction(uint id, const QString& key);

private:
    uint id_ = 0;
};
