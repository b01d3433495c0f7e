#pragma once

#include "engine/Session.h"

#include <QHash>

#include <memory>

// The sessions of one account, a session per bare JID.
class SessionTable
{
public:
    // Makes the session at the first call for a JID; `created` tells whether this was it.
    std::shared_ptr<Session> session(const QString& bareJid, bool* created = nullptr);
    void close(const QString& bareJid) { sessions_.remove(bareJid); }
    void clear() { sessions_.clear(); }

private:
    QHash<QString, std::shared_ptr<Session>> sessions_;
};
