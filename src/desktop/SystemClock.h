#pragma once

#include "desktop/Desktop.h"

// The machine's clock, in local time.
class SystemClock : public Clock
{
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};
