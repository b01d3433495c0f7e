#pragma once

#include <QTimer>

struct Client;

// Watches over a wait for an answer, of which nobody knows whether it comes.
class AnswerWait : public QObject
{
    Q_OBJECT

public:
    // The client must outlive the object.
    AnswerWait(const Client& client, QObject* parent);

    void begin();
    void end() { clock_.stop(); }
    bool isWaiting() const { return clock_.isActive(); }

signals:
    // The answer has been waited for for 30 s, not counting the time in which the person was asked something.
    // The wait goes on.
    void late();
    // There is nothing to wait for any more; the wait is over.
    void connectionLost();

private:
    void tick();

    const Client& client_;
    QTimer clock_;
    int ticks_ = 0;
};
