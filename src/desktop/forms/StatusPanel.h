#pragma once

#include <QLabel>
#include <QStatusBar>
#include <QTimer>

// The text of a status bar. It is a label, so that assistive technology reads the whole of it and no opening
// menu wipes it. Where the window is narrower it ends in "…", and the tool tip has the rest.
class StatusPanel : public QLabel
{
    Q_OBJECT

public:
    StatusPanel(QStatusBar* bar, const QString& name);

    // Shows the text in place of the former one; it goes again after `milliseconds`, unless they are 0.
    void tell(const QString& text, int milliseconds = 0);
    // What is seen of the text.
    QString shownText() const;

signals:
    // Empty for a text that went.
    void told(const QString& text);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QTimer expiry_;
};
