#pragma once

#include "engine/Session.h"

#include <QHash>

#include <memory>

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
