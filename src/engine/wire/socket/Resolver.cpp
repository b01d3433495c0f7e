#include "engine/wire/socket/Resolver.h"

#include <QDnsLookup>
#include <QUrl>

namespace
{

class DnsSrvLookup : public SrvLookup
{
public:
    DnsSrvLookup(const QString& name, const std::function<void()>& wakeUp) : lookup_(QDnsLookup::SRV, name)
    {
        QObject::connect(&lookup_, &QDnsLookup::finished, &lookup_, wakeUp);
        lookup_.lookup();
    }
    bool isFinished() const override { return lookup_.isFinished(); }
    QList<SrvRecord> records() const override;

private:
    QDnsLookup lookup_;
};

QList<SrvRecord> DnsSrvLookup::records() const
{
    QList<SrvRecord> records;
    // Sorted by priority, and by weight and chance within one (RFC 2782).
    for (const auto& record : lookup_.serviceRecords())
        records.append({record.target(), record.port(), record.priority()});
    return records;
}

class DnsResolver : public Resolver
{
public:
    std::unique_ptr<SrvLookup> lookUp(const QString& name, const std::function<void()>& wakeUp) override
    {
        const QByteArray ascii = QUrl::toAce(name, QUrl::IgnoreIDNWhitelist);
        return std::make_unique<DnsSrvLookup>(ascii.isEmpty() ? name : QString::fromLatin1(ascii), wakeUp);
    }
};

} // namespace

std::unique_ptr<Resolver> systemResolver()
{
    return std::make_unique<DnsResolver>();
}
