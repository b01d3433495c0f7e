#pragma once

#include <QLabel>
#include <QStringList>
#include <QWidget>

#include <functional>

// The messages of a conversation that were shown as sent and came back. While there are any, a line above the
// entry offers to send them again, or to let them go.
class ReturnedMessages : public QWidget
{
    Q_OBJECT

public:
    // `send` says whether a text went out; its boxes may outlive the window.
    ReturnedMessages(QWidget* parent, std::function<bool(const QString&)> send);

    void add(const QString& body);

private:
    void sendAgain();
    void show(const QStringList& bodies);

    std::function<bool(const QString&)> send_;
    QStringList bodies_;
    QLabel* count_;
};
