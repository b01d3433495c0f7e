#include "desktop/forms/StatusPanel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QTextDocument>
#include <QToolTip>

StatusPanel::StatusPanel(QStatusBar* bar, const QString& name) : QLabel(bar), expiry_(this)
{
    setObjectName(name);
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    bar->addWidget(this, 1);
    expiry_.setSingleShot(true);
    connect(&expiry_, &QTimer::timeout, this, [this] { tell({}); });
}

void StatusPanel::tell(const QString& text, int milliseconds)
{
    setText(text);
    emit told(text);
    milliseconds > 0 ? expiry_.start(milliseconds) : expiry_.stop();
}

QString StatusPanel::shownText() const
{
    return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

bool StatusPanel::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const bool cut = shownText() != text();
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                       cut ? Qt::convertFromPlainText(text()) : QString(), this);
    return true;
}

void StatusPanel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), int(alignment()), palette(), isEnabled(), shownText(),
                          foregroundRole());
}
