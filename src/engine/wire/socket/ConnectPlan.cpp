#include "engine/wire/socket/ConnectPlan.h"

#include <algorithm>

namespace
{

constexpr quint16 plainPort = 5222;
constexpr quint16 directPort = 5223;
constexpr qsizetype most = 6;

QList<Candidate> fromDns(const SrvAnswers& answers)
{
    struct Entry {
        SrvRecord record;
        bool direct;
    };
    QList<Entry> entries;
    for (const auto& record : answers.direct)
        entries.append({record, true});
    for (const auto& record : answers.plain)
        entries.append({record, false});
    // Both services share one order (XEP-0368, 3); direct TLS first where they are equal.
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& a, const Entry& b) { return a.record.priority < b.record.priority; });
    QList<Candidate> plan;
    for (const auto& [record, direct] : std::as_const(entries)) {
        const bool offered = !record.host.isEmpty() && record.host != u"."; // RFC 2782: "." is a no
        if (offered && record.port != 0 && plan.size() < most)
            plan.append({record.host, record.port, direct});
    }
    return plan;
}

} // namespace

QList<Candidate> connectPlan(const ServerAddress& address, bool secure, const SrvAnswers& answers)
{
    if (!answers.direct.isEmpty() || !answers.plain.isEmpty())
        return fromDns(answers);
    const QString& host = address.host();
    const quint16 port = address.port();
    const Candidate starting{host, port ? port : plainPort, false};
    const Candidate direct{host, port ? port : directPort, true};
    if (port == directPort || (secure && port != plainPort))
        return {direct, starting};
    return secure ? QList<Candidate>{starting, direct} : QList<Candidate>{starting};
}
