#include "desktop/BalloonQueue.h"

#include <QRegularExpression>

#include <utility>

QString plainNotice(const QString& text)
{
    static const QRegularExpression markup(QStringLiteral("([<&])(?=[A-Za-z/!?#])"));
    static const QString wordJoiner(QChar(0x2060));
    return QString(text).replace(markup, QStringLiteral("\\1") + wordJoiner);
}

BalloonQueue::BalloonQueue(Show show, int pause) : show_(std::move(show)), pause_(pause)
{
    timer_.setSingleShot(true);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { release(); });
}

void BalloonQueue::post(Balloon balloon)
{
    next_ = std::move(balloon);
    if (!timer_.isActive())
        timer_.start(0);
}

void BalloonQueue::release()
{
    // The pause after a balloon ends without a new one.
    if (!next_)
        return;
    const Balloon balloon = *std::exchange(next_, std::nullopt);
    timer_.start(pause_);
    show_(balloon);
}
