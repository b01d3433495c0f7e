#include "services/forms/AnswerWait.h"

#include "contacts/Client.h"

#include <QApplication>

namespace
{

constexpr int tickMs = 1000;
constexpr int patience = 30; // ticks

} // namespace

AnswerWait::AnswerWait(const Client& client, QObject* parent) : QObject(parent), client_(client), clock_(this)
{
    clock_.setObjectName(QStringLiteral("AnswerClock"));
    clock_.setInterval(tickMs);
    connect(&clock_, &QTimer::timeout, this, &AnswerWait::tick);
}

void AnswerWait::begin()
{
    ticks_ = 0;
    clock_.start();
}

void AnswerWait::tick()
{
    if (QApplication::activeModalWidget())
        return;
    if (!client_.isConnected()) {
        end();
        emit connectionLost();
    } else if (++ticks_ == patience) {
        emit late();
    }
}
