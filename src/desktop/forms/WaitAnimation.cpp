#include "desktop/forms/WaitAnimation.h"

#include "desktop/Desktop.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImageReader>
#include <QPainter>

namespace
{

constexpr QSize largestScreen(1024, 1024);
constexpr QSize usualSize(96, 48);

bool fits(const QSize& size)
{
    return !size.isEmpty() && size.width() <= largestScreen.width() &&
           size.height() <= largestScreen.height();
}

// The one picture of a GIF file; null for one that can't be decoded or is out of all measure. The decoder
// places it in the logical screen by itself.
QPixmap decoded(QByteArray gif)
{
    QBuffer buffer(&gif);
    QImageReader reader(&buffer, "gif");
    return fits(reader.size()) ? QPixmap::fromImageReader(&reader) : QPixmap();
}

} // namespace

WaitAnimation::WaitAnimation(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("Image1"));
    setAccessibleName(objectName());
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&timer_, &QTimer::timeout, this, &WaitAnimation::tick);
}

void WaitAnimation::Start(const QString& path)
{
    Stop();
    const int count = gif_.LoadGif(path);
    updateGeometry();
    if (count > 0)
        showFrame(0);
    else if (!gif_.errorText().isEmpty() && boxes_)
        boxes_->critical(QCoreApplication::applicationName(), gif_.errorText());
}

void WaitAnimation::Stop()
{
    timer_.stop();
    frame_ = -1;
    picture_ = QPixmap();
    update();
}

QSize WaitAnimation::sizeHint() const
{
    return fits(gif_.screenSize()) ? gif_.screenSize() : usualSize;
}

void WaitAnimation::paintEvent(QPaintEvent*)
{
    if (picture_.isNull())
        return;
    QPainter painter(this);
    const QPoint origin((width() - picture_.width()) / 2, (height() - picture_.height()) / 2);
    painter.drawPixmap(origin + gif_.offset(frame_) - gif_.place(frame_), picture_);
}

void WaitAnimation::tick()
{
    showFrame((frame_ + 1) % gif_.count());
}

void WaitAnimation::showFrame(int frame)
{
    frame_ = frame;
    picture_ = decoded(gif_.gif(frame));
    const int wait = gif_.delay(frame) + extraDelay_;
    // A frame without a delay stands for good.
    if (wait > 0)
        timer_.start(wait);
    else
        timer_.stop();
    update();
}
