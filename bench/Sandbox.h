#pragma once

#include "Child.h"

// The sandbox server with the account bench/bench and its contacts, as a process of its own.
class Sandbox
{
public:
    Sandbox(int contacts, int groups);

    QString address() const { return QStringLiteral("localhost:") + port_; }

private:
    Child server_;
    QString port_;
};
