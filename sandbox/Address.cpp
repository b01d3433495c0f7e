#include "sandbox/Address.h"

namespace sandbox::address
{

QString rehosted(const QString& jid, const QString& from, const QString& to)
{
    const QString where = domain(jid);
    if (from.isEmpty() || (where != from && !where.endsWith(u'.' + from)))
        return jid;
    const auto end = bare(jid).size();
    return jid.left(end - from.size()) + to + jid.mid(end);
}

} // namespace sandbox::address
