#pragma once

#include "desktop/BalloonQueue.h"
#include "desktop/Desktop.h"

#include <QElapsedTimer>
#include <QIcon>
#include <QObject>
#include <QPointer>
#include <QSystemTrayIcon>

#include <functional>

class QMenu;

// The icon in the notification area. It remembers what is set and takes its place there only with `appear`,
// which costs a program start more than all windows do. Where the desktop has no such area nothing shows, and
// the icon comes up when an area does.
class QtTrayIcon : public QObject, public TrayIcon
{
    Q_OBJECT

public:
    // Draws the picture of an image list's key.
    using Picture = std::function<QIcon(const QString& imageKey)>;

    explicit QtTrayIcon(Picture picture, QObject* parent = nullptr);

    // Call it once the first window is up. Further calls do nothing.
    void appear();
    // The menu of the right click. Not owned.
    void setContextMenu(QMenu* menu);

    void setToolTip(const QString& text) override;
    void setIcon(const QString& imageKey) override;
    void setBalloonTime(int milliseconds) override { balloon_.milliseconds = milliseconds; }
    void setBalloonIcon(int icon) override { balloon_.icon = icon; }
    void setBalloonTitle(const QString& text) override { balloon_.title = text; }
    void setBalloonText(const QString& text) override { balloon_.text = text; }
    void showBalloon() override { balloons_.post(balloon_); }
    bool isReachable() const override;

signals:
    void doubleClicked();
    // The middle button, or a right click while no context menu is set: the owner shows a menu at the
    // pointer. A context menu that is set comes up by itself.
    void menuRequested();

private:
    void activated(QSystemTrayIcon::ActivationReason reason);
    void show(const Balloon& balloon);

    Picture picture_;
    QSystemTrayIcon* icon_ = nullptr;
    QPointer<QMenu> menu_;
    QString toolTip_;
    QString imageKey_;
    Balloon balloon_;
    BalloonQueue balloons_;
    QElapsedTimer sinceClick_;
};
