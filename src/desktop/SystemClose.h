#pragma once

#include <QObject>

// Tells when the desktop or the system asks the program to end: a signal (SIGTERM, SIGINT, SIGHUP), or the
// application's Quit event, which would otherwise ask the windows, and those only hide. One at a time.
class SystemClose : public QObject
{
    Q_OBJECT

public:
    explicit SystemClose(QObject* parent = nullptr);
    // Gives the signals back their usual effect.
    ~SystemClose() override;

signals:
    // In the event loop, not in the signal's handler.
    void requested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void takeSignal();

    int pipe_[2] = {-1, -1};
};
