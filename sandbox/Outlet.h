#pragma once

#include "sandbox/Script.h"

#include <QObject>

#include <functional>

class QTcpSocket;

namespace sandbox
{

// The way out of one connection: writes at the script's pace, and pours a flood as fast as the socket takes
// it.
class Outlet : public QObject
{
    Q_OBJECT
public:
    // Neither is owned; both outlive the outlet.
    Outlet(QTcpSocket& socket, const Pace& pace);

    void write(const QByteArray& bytes);
    // Calls `source` for chunks of whole stanzas until it gives an empty one.
    void pour(std::function<QByteArray()> source);
    // Goes on after the pace was changed.
    void pump();
    // Closes once everything written has left.
    void finish();

private:
    void refill();
    bool cut();

    QTcpSocket& socket_;
    const Pace& pace_;
    QByteArray waiting_;
    std::function<QByteArray()> source_;
    qint64 left_ = 0; // bytes that have gone to the socket
    bool finished_ = false;
};

} // namespace sandbox
