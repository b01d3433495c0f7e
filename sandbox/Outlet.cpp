#include "sandbox/Outlet.h"

#include <QTcpSocket>

#include <algorithm>

namespace sandbox
{

namespace
{
constexpr qsizetype Backlog = 256 * 1024;
}

Outlet::Outlet(QTcpSocket& socket, const Pace& pace) : socket_(socket), pace_(pace)
{
    connect(&socket_, &QTcpSocket::bytesWritten, this, &Outlet::pump);
}

void Outlet::write(const QByteArray& bytes)
{
    if (finished_)
        return;
    waiting_ += bytes;
    pump();
}

void Outlet::pour(std::function<QByteArray()> source)
{
    source_ = std::move(source);
    pump();
}

void Outlet::finish()
{
    finished_ = true;
    pump();
}

// One piece at a time where the pace asks for pieces: the next one leaves when the socket has taken this one,
// so that the other side has its turn between the two.
void Outlet::pump()
{
    if (pace_.held || socket_.state() != QAbstractSocket::ConnectedState)
        return;
    if (pace_.pieceSize > 0 && socket_.bytesToWrite() > 0)
        return;
    refill();
    const qsizetype size =
        pace_.pieceSize > 0 ? std::min<qsizetype>(pace_.pieceSize, waiting_.size()) : waiting_.size();
    QByteArray piece = waiting_.left(size);
    waiting_.remove(0, size);
    if (pace_.cutAfter >= 0)
        piece.truncate(std::max<qint64>(0, pace_.cutAfter - left_));
    left_ += piece.size();
    socket_.write(piece);
    if (cut() || (finished_ && waiting_.isEmpty()))
        socket_.disconnectFromHost();
}

void Outlet::refill()
{
    while (source_ && waiting_.size() + socket_.bytesToWrite() < Backlog) {
        const QByteArray chunk = source_();
        waiting_ += chunk;
        if (chunk.isEmpty())
            source_ = nullptr;
    }
}

bool Outlet::cut()
{
    return pace_.cutAfter >= 0 && left_ >= pace_.cutAfter;
}

} // namespace sandbox
