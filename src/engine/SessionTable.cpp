#include "engine/SessionTable.h"

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
