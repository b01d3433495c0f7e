#pragma once

#include <QLabel>
#include <QStatusBar>
#include <QTimer>

// The text of a status bar. It is a label, so that assistive technology reads it and no opening menu wipes
// it, and it is cut where the window is narrower.
class StatusPanel : public QLabel
{
    Q_OBJECT

public:
    StatusPanel(QStatusBar* bar, const QString& name) : QLabel(bar), expiry_(this)
    {
        setObjectName(name);
        setTextFormat(Qt::PlainText);
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        bar->addWidget(this, 1);
        expiry_.setSingleShot(true);
        connect(&expiry_, &QTimer::timeout, this, [this] { tell({}); });
    }

    // Shows the text in place of the former one; it goes again after `milliseconds`, unless they are 0.
    void tell(const QString& text, int milliseconds = 0)
    {
        setText(text);
        emit told(text);
        milliseconds > 0 ? expiry_.start(milliseconds) : expiry_.stop();
    }

signals:
    // Empty for a text that went.
    void told(const QString& text);

private:
    QTimer expiry_;
};
