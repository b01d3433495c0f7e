#include "messaging/forms/ReturnedMessages.h"

#include <QHBoxLayout>
#include <QPointer>
#include <QPushButton>

ReturnedMessages::ReturnedMessages(QWidget* parent, std::function<bool(const QString&)> send)
    : QWidget(parent), send_(std::move(send)), count_(new QLabel(this))
{
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins({});
    line->addWidget(count_, 1);
    auto* again = new QPushButton(tr("Send Aga&in"), this);
    again->setObjectName(QStringLiteral("cmdSendAgain"));
    auto* discard = new QPushButton(tr("&Discard"), this);
    discard->setObjectName(QStringLiteral("cmdDiscard"));
    line->addWidget(again);
    line->addWidget(discard);
    connect(again, &QPushButton::clicked, this, &ReturnedMessages::sendAgain);
    connect(discard, &QPushButton::clicked, this, [this] { show({}); });
    show({});
}

void ReturnedMessages::add(const QString& body)
{
    show(bodies_ + QStringList(body));
}

// What goes out stands in the transcript anew.
void ReturnedMessages::sendAgain()
{
    const QPointer<ReturnedMessages> self(this);
    const auto send = send_;
    while (self && !bodies_.isEmpty() && send(QString(bodies_.first()))) {
        if (self)
            show(bodies_.mid(1));
    }
}

void ReturnedMessages::show(const QStringList& bodies)
{
    bodies_ = bodies;
    count_->setText(tr("Undelivered messages: %1").arg(bodies.size()));
    setVisible(!bodies.isEmpty());
}
