#pragma once

#include "desktop/Desktop.h"

// The machine's clock, in local time, to the second. The time zone, which costs a look at the disk, is asked
// once a second at most.
class SystemClock : public Clock
{
public:
    QDateTime now() const override
    {
        const qint64 second = QDateTime::currentSecsSinceEpoch();
        if (now_.isNull() || second != second_) {
            second_ = second;
            now_ = QDateTime::fromSecsSinceEpoch(second);
        }
        return now_;
    }

private:
    mutable QDateTime now_;
    mutable qint64 second_ = 0;
};
