#include "settings/LastSafety.h"

#include "settings/IniFile.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace lastSafety
{
namespace
{

const QString section = QStringLiteral("Sign-ins");
constexpr std::array<const char*, 5> proofs{"none", "plain", "digest", "SCRAM-SHA-1", "SCRAM-SHA-256"};

// An entry is the number of its turn, what the stream was, and how the password was proven.
QStringList wordsOf(const IniFile& file, const QString& key)
{
    return file.read(section, key).value_or(QString()).split(u' ', Qt::SkipEmptyParts);
}

qlonglong turnOf(const IniFile& file, const QString& key)
{
    return wordsOf(file, key).value(0).toLongLong();
}

QString wayOf(const Safety& safety)
{
    return safety.verified    ? QStringLiteral("verified")
           : safety.encrypted ? QStringLiteral("encrypted")
                              : QStringLiteral("clear");
}

} // namespace

std::optional<Safety> read(const IniFile& file, const QString& account)
{
    const auto words = wordsOf(file, IniFile::keyOf(account));
    for (std::size_t i = 0; i < proofs.size() && words.size() == 3; ++i) {
        if (words[2] == QLatin1String(proofs[i]))
            return Safety{words[1] != u"clear", words[1] == u"verified", Proof(i)};
    }
    return std::nullopt;
}

bool write(IniFile& file, const QString& account, const Safety& reached)
{
    const QString own = IniFile::keyOf(account);
    const qlonglong turn = turnOf(file, own);
    QStringList others = file.keys(section);
    others.removeAll(own);
    std::sort(others.begin(), others.end(), [&file](const QString& one, const QString& other) {
        return turnOf(file, one) < turnOf(file, other);
    });
    const qlonglong newest = others.isEmpty() ? 0 : turnOf(file, others.last());
    if (turn > newest && read(file, account) == reached)
        return false;
    while (others.size() >= mostAccounts)
        file.remove(section, others.takeFirst());
    file.write(section, own,
               QStringLiteral("%1 %2 %3")
                   .arg(qMax(turn, newest) + 1)
                   .arg(wayOf(reached), QLatin1String(proofs[std::size_t(reached.proof)])));
    return true;
}

} // namespace lastSafety
