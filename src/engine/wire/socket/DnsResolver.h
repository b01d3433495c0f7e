#pragma once

#include "engine/wire/socket/Resolver.h"

// The system's DNS.
class DnsResolver : public Resolver
{
public:
    std::unique_ptr<SrvLookup> lookUp(const QString& name, const std::function<void()>& wakeUp) override;
};
