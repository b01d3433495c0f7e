#pragma once

#include <QDateTime>

#include <algorithm>
#include <optional>

// Tells once that something has been waited for too long. It counts the time in which it is asked: while a
// question to the person stops the pump, it stands.
class Patience
{
public:
    void begin()
    {
        waitedMs_ = 0;
        last_.reset();
    }
    void end() { waitedMs_ = -1; }

    // To be asked several times a second. True once, when the time is over.
    bool isOver(const QDateTime& now)
    {
        if (waitedMs_ < 0)
            return false;
        if (last_)
            waitedMs_ += std::clamp<qint64>(last_->msecsTo(now), 0, mostStepMs);
        last_ = now;
        if (waitedMs_ < limitMs)
            return false;
        end();
        return true;
    }

private:
    static constexpr qint64 limitMs = 30'000;
    static constexpr qint64 mostStepMs = 1'000;

    qint64 waitedMs_ = -1; // negative while nothing is waited for
    std::optional<QDateTime> last_;
};
