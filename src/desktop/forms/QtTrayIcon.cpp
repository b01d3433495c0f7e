#include "desktop/forms/QtTrayIcon.h"

#include <QGuiApplication>
#include <QMenu>
#include <QStyleHints>

#include <algorithm>
#include <utility>

QtTrayIcon::QtTrayIcon(Picture picture, QObject* parent)
    : QObject(parent), picture_(std::move(picture)),
      balloons_([this](const Balloon& balloon) { show(balloon); })
{
}

void QtTrayIcon::appear()
{
    if (icon_)
        return;
    icon_ = new QSystemTrayIcon(picture_(imageKey_), this);
    icon_->setToolTip(toolTip_);
    icon_->setContextMenu(menu_);
    connect(icon_, &QSystemTrayIcon::activated, this, &QtTrayIcon::activated);
    icon_->show();
}

bool QtTrayIcon::isReachable() const
{
    return icon_ && QSystemTrayIcon::isSystemTrayAvailable();
}

void QtTrayIcon::setContextMenu(QMenu* menu)
{
    menu_ = menu;
    if (icon_)
        icon_->setContextMenu(menu);
}

void QtTrayIcon::setToolTip(const QString& text)
{
    toolTip_ = text;
    if (icon_)
        icon_->setToolTip(text);
}

void QtTrayIcon::setIcon(const QString& imageKey)
{
    if (imageKey_ == imageKey)
        return;
    imageKey_ = imageKey;
    if (icon_)
        icon_->setIcon(picture_(imageKey));
}

void QtTrayIcon::activated(QSystemTrayIcon::ActivationReason reason)
{
    switch (reason) {
    case QSystemTrayIcon::MiddleClick:
        emit menuRequested();
        break;
    case QSystemTrayIcon::Context:
        if (!menu_)
            emit menuRequested();
        break;
    case QSystemTrayIcon::DoubleClick:
        sinceClick_.invalidate();
        emit doubleClicked();
        break;
    case QSystemTrayIcon::Trigger: {
        // Areas reached by the session bus know single clicks only: two quick ones are a double click.
        const int interval = QGuiApplication::styleHints()->mouseDoubleClickInterval();
        const bool isSecond = sinceClick_.isValid() && sinceClick_.elapsed() <= interval;
        isSecond ? sinceClick_.invalidate() : sinceClick_.start();
        if (isSecond)
            emit doubleClicked();
        break;
    }
    default:
        break;
    }
}

void QtTrayIcon::show(const Balloon& balloon)
{
    appear();
    icon_->showMessage(plainNotice(balloon.title), plainNotice(balloon.text),
                       QSystemTrayIcon::MessageIcon(balloon.icon), std::max(0, balloon.milliseconds));
}
