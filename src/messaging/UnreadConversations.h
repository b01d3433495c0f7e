#pragma once

#include <QObject>
#include <QStringList>

// Whose messages came without being seen, the longest waiting first. A conversation is read when the person
// works with its window.
class UnreadConversations : public QObject
{
    Q_OBJECT

public:
    const QStringList& peers() const { return peers_; }

    void add(const QString& peer)
    {
        if (peers_.contains(peer))
            return;
        peers_ += peer;
        emit changed(peers_);
    }
    void remove(const QString& peer)
    {
        if (peers_.removeOne(peer))
            emit changed(peers_);
    }

signals:
    void changed(const QStringList& peers);

private:
    QStringList peers_;
};
