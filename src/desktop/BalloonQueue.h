#pragma once

#include <QString>
#include <QTimer>

#include <functional>
#include <optional>

// A notice of the tray icon. Texts are plain.
struct Balloon {
    QString title;
    QString text;
    int milliseconds = 10000;
    int icon = 0; // as of QSystemTrayIcon::MessageIcon
    bool operator==(const Balloon&) const = default;
};

// A text as a notification service shows it as typed. Some services read "<" and "&" as markup, others don't
// and would show escapes; an invisible joiner behind the sign keeps both from seeing a tag or an entity.
QString plainNotice(const QString& text);

// Lets balloons through at a pace that a person can read: of those that come together only the last is shown.
class BalloonQueue
{
public:
    using Show = std::function<void(const Balloon&)>;

    // At least `pause` milliseconds lie between two balloons.
    explicit BalloonQueue(Show show, int pause = 500);

    // Shows the balloon once control is back at the event loop, unless a newer one comes first.
    void post(Balloon balloon);

private:
    void release();

    Show show_;
    int pause_;
    QTimer timer_;
    std::optional<Balloon> next_;
};
