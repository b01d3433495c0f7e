#pragma once

#include "desktop/BalloonQueue.h"
#include "desktop/Desktop.h"
#include "desktop/NotificationService.h"

#include <QElapsedTimer>
#include <QIcon>
#include <QObject>
#include <QPointer>
#include <QSystemTrayIcon>

#include <functional>
#include <memory>

class QMenu;

// The icon in the notification area. It remembers what is set and takes its place there only with `appear`,
// which costs a program start more than all windows do. Where the desktop has no such area balloons become
// the desktop's notifications, and the icon comes up when an area does.
class QtTrayIcon : public QObject, public TrayIcon
{
    Q_OBJECT

public:
    // Draws the picture of an image list's key.
    using Picture = std::function<QIcon(const QString& imageKey)>;

    explicit QtTrayIcon(Picture picture, QObject* parent = nullptr);

    // Call it once the first window is up. Further calls do nothing.
    void appear();
    // Leaves its place; what is set is remembered still.
    void disappear();
    // The menu of the right click. Not owned.
    void setContextMenu(QMenu* menu);

    void setToolTip(const QString& text) override;
    void setIcon(const QString& imageKey) override;
    void setBalloonTime(int milliseconds) override { balloon_.milliseconds = milliseconds; }
    void setBalloonIcon(int icon) override { balloon_.icon = icon; }
    void setBalloonTitle(const QString& text) override { balloon_.title = text; }
    void setBalloonText(const QString& text) override { balloon_.text = text; }
    void showBalloon() override { balloons_.post(balloon_); }
    void setUnread(int conversations) override;
    int unread() const { return unread_; }
    bool isReachable() const override;

signals:
    // The first click of what may become a double click.
    void clicked();
    void balloonClicked();
    void doubleClicked();
    // The middle button, or a right click while no context menu is set: the owner shows a menu at the
    // pointer. A context menu that is set comes up by itself.
    void menuRequested();

private:
    void activated(QSystemTrayIcon::ActivationReason reason);
    void show(const Balloon& balloon);
    bool notify(const Balloon& balloon);
    QIcon picture() const;
    QString tip() const;
    void redraw();

    Picture picture_;
    QSystemTrayIcon* icon_ = nullptr;
    QPointer<QMenu> menu_;
    QString toolTip_;
    QString imageKey_;
    int unread_ = 0;
    Balloon balloon_;
    BalloonQueue balloons_;
    QElapsedTimer sinceClick_;
    std::unique_ptr<NotificationService> notifications_;
    bool searched_ = false; // for the module of the notifications
};
