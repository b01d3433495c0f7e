#include "desktop/forms/QtTrayIcon.h"

#include "settings/Module.h"

#include <QGuiApplication>
#include <QMenu>
#include <QPainter>
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
    icon_ = new QSystemTrayIcon(this);
    redraw();
    icon_->setContextMenu(menu_);
    connect(icon_, &QSystemTrayIcon::activated, this, &QtTrayIcon::activated);
    connect(icon_, &QSystemTrayIcon::messageClicked, this, &QtTrayIcon::balloonClicked);
    icon_->show();
}

// Its own signal may be what makes it go.
void QtTrayIcon::disappear()
{
    if (!icon_)
        return;
    icon_->disconnect(this);
    icon_->hide();
    std::exchange(icon_, nullptr)->deleteLater();
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
        icon_->setToolTip(tip());
}

void QtTrayIcon::setIcon(const QString& imageKey)
{
    if (imageKey_ == imageKey)
        return;
    imageKey_ = imageKey;
    redraw();
}

void QtTrayIcon::setUnread(int conversations)
{
    if (std::exchange(unread_, conversations) != conversations)
        redraw();
}

void QtTrayIcon::redraw()
{
    if (!icon_)
        return;
    icon_->setIcon(picture());
    icon_->setToolTip(tip());
}

QString QtTrayIcon::tip() const
{
    if (unread_ == 0)
        return toolTip_;
    return toolTip_ + u'\n' +
           (unread_ == 1 ? tr("1 unread conversation") : tr("%1 unread conversations").arg(unread_));
}

// While something is unread a dot with a bright rim lies on the lower right of the picture.
QIcon QtTrayIcon::picture() const
{
    const QIcon plain = picture_(imageKey_);
    if (unread_ == 0)
        return plain;
    QIcon marked;
    for (const int size : {16, 22, 24, 32, 48, 64}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        plain.paint(&painter, pixmap.rect());
        painter.setPen(QPen(Qt::white, size / 16.0));
        painter.setBrush(QColor(0xD4, 0x1C, 0x1C));
        painter.drawEllipse(QRectF(size * 0.47, size * 0.47, size * 0.5, size * 0.5));
        painter.end();
        marked.addPixmap(pixmap);
    }
    return marked;
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
        else
            emit clicked();
        break;
    }
    default:
        break;
    }
}

void QtTrayIcon::show(const Balloon& balloon)
{
    appear();
    const Balloon plain{plainNotice(balloon.title), plainNotice(balloon.text),
                        std::max(0, balloon.milliseconds), balloon.icon};
    if (QSystemTrayIcon::isSystemTrayAvailable() || !notify(plain))
        icon_->showMessage(plain.title, plain.text, QSystemTrayIcon::MessageIcon(plain.icon),
                           plain.milliseconds);
}

bool QtTrayIcon::notify(const Balloon& balloon)
{
    if (!std::exchange(searched_, true)) {
        notifications_ = module::make<NotificationService>(QStringLiteral("breloim_notifications"));
        if (notifications_)
            notifications_->clicked = [this] { emit balloonClicked(); };
    }
    return notifications_ && notifications_->show(balloon);
}
