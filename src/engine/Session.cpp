#include "engine/Session.h"

#include <utility>

std::shared_ptr<Session> SessionTable::session(const QString& bareJid, bool* created)
{
    auto& entry = sessions_[bareJid];
    const bool isNew = !entry;
    if (isNew)
        entry = std::make_shared<Session>(bareJid, [this](const QString& jid) { close(jid); });
    if (created)
        *created = isNew;
    return entry;
}

void SessionTable::close(const QString& bareJid)
{
    if (const auto session = sessions_.take(bareJid))
        session->Properties().RemoveAll();
}

void SessionTable::clear()
{
    const auto gone = std::exchange(sessions_, {});
    for (const auto& session : gone)
        session->Properties().RemoveAll();
}
