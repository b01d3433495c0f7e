#pragma once

#include <QHash>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

// The keyed bag of a session. It owns what is put into it; in use are windows.
class SessionProperties
{
public:
    void Add(std::shared_ptr<QObject> value, const QString& key) { values_.insert(key, std::move(value)); }
    // Null when the key is absent.
    QObject* Item(const QString& key) const { return values_.value(key).get(); }
    bool Exists(const QString& key) const { return values_.contains(key); }
    void Remove(const QString& key) { values_.remove(key); }
    void RemoveAll() { values_.clear(); }
    bool isEmpty() const { return values_.isEmpty(); }

private:
    QHash<QString, std::shared_ptr<QObject>> values_;
};

// The conversation with one bare JID.
class Session
{
public:
    Session(QString bareJid, std::function<void(const QString&)> close)
        : bareJid_(std::move(bareJid)), close_(std::move(close))
    {
    }

    const QString& bareJid() const { return bareJid_; }
    SessionProperties& Properties() { return properties_; }
    // Forgets the session and what its bag holds; the next stanza of the peer begins a new one.
    void Close()
    {
        if (close_)
            close_(bareJid_);
    }

private:
    QString bareJid_;
    SessionProperties properties_;
    std::function<void(const QString&)> close_;
};

// The sessions of one account, a session per bare JID. A session that goes empties its bag at once: windows
// in it may hold a context, and so the session itself.
class SessionTable
{
public:
    SessionTable() = default;
    ~SessionTable() { clear(); }
    SessionTable(const SessionTable&) = delete;
    SessionTable& operator=(const SessionTable&) = delete;

    // Makes the session at the first call for a JID; `created` tells whether this was it.
    std::shared_ptr<Session> session(const QString& bareJid, bool* created = nullptr);
    void close(const QString& bareJid);
    void clear();

private:
    QHash<QString, std::shared_ptr<Session>> sessions_;
};
