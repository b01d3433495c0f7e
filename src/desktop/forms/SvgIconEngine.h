#pragma once

#include <QHash>
#include <QIconEngine>
#include <QPixmap>
#include <QString>

// One SVG drawing as an icon. It is rendered once for each size, mode and pixel ratio that is asked for, at
// the device's own resolution; painting copies the pixmap. Made without Qt's icon plugin, so that no plugin
// is loaded and no file is read before a picture is shown.
class SvgIconEngine : public QIconEngine
{
public:
    explicit SvgIconEngine(QString file) : file_(std::move(file)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override;
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override;
    bool isNull() override { return file_.isEmpty(); }
    QString key() const override { return QStringLiteral("BreloSvg"); }
    QIconEngine* clone() const override { return new SvgIconEngine(*this); }

private:
    // `pixels` in device pixels.
    QPixmap cached(int pixels, QIcon::Mode mode);

    QString file_;
    QHash<int, QPixmap> pixmaps_; // by device pixels and mode
};
