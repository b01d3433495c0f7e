#pragma once

#include "engine/wire/Resolver.h"

// The system's DNS.
class DnsResolver : public Resolver
{
public:
    std::unique_ptr<SrvLookup> lookUp(const QString& name) override;
};
