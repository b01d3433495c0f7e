#include "desktop/forms/SvgIconEngine.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QSvgRenderer>

namespace
{

constexpr int modes = 4;           // QIcon::Normal to QIcon::Selected
constexpr int largestPixels = 512; // of a cached pixmap's side; larger requests are scaled up by the painter

QPixmap rendered(const QString& file, int pixels)
{
    QPixmap pixmap(pixels, pixels);
    pixmap.fill(Qt::transparent);
    QSvgRenderer renderer(file);
    QPainter painter(&pixmap);
    renderer.render(&painter, QRectF(0, 0, pixels, pixels));
    return pixmap;
}

int side(const QSize& size)
{
    return qBound(1, qMin(size.width(), size.height()), largestPixels);
}

} // namespace

QPixmap SvgIconEngine::cached(int pixels, QIcon::Mode mode)
{
    // A selected row shows the picture as it is: its colours tell the state.
    if (mode == QIcon::Selected || mode == QIcon::Active)
        mode = QIcon::Normal;
    QPixmap& pixmap = pixmaps_[pixels * modes + mode];
    if (!pixmap.isNull())
        return pixmap;
    pixmap = rendered(file_, pixels);
    if (mode == QIcon::Disabled) {
        QStyleOption option;
        option.palette = QApplication::palette();
        pixmap = QApplication::style()->generatedIconPixmap(mode, pixmap, &option);
    }
    return pixmap;
}

void SvgIconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State)
{
    const int shown = qMin(rect.width(), rect.height());
    if (shown < 1)
        return;
    const qreal scale = painter->device()->devicePixelRatioF();
    QRect square(0, 0, shown, shown);
    square.moveCenter(rect.center());
    painter->drawPixmap(square, cached(side(QSizeF(square.size() * scale).toSize()), mode));
}

QPixmap SvgIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State)
{
    return size.isEmpty() ? QPixmap() : cached(side(size), mode);
}

// `size` is in device pixels already.
QPixmap SvgIconEngine::scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal)
{
    return pixmap(size, mode, state);
}

QSize SvgIconEngine::actualSize(const QSize& size, QIcon::Mode, QIcon::State)
{
    return size.isEmpty() ? QSize() : QSize(side(size), side(size));
}

QList<QSize> SvgIconEngine::availableSizes(QIcon::Mode, QIcon::State)
{
    return {{16, 16}, {20, 20}, {22, 22}, {24, 24}, {32, 32}, {48, 48}, {64, 64}, {128, 128}};
}
