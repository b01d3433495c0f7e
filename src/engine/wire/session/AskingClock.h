#pragma once

#include <QtGlobal>

#include <functional>
#include <optional>

// The clock of the time-outs. It stands while the person is asked something: thinking is nobody's delay.
class AskingClock
{
public:
    explicit AskingClock(std::function<qint64()> clock) : clock_(std::move(clock)) {}

    qint64 now() const { return askedAt_.value_or(clock_()) - asked_; }

    // What `ask` answers. It may run a nested event loop; whoever calls keeps this object for its time.
    template <typename Ask>
    auto during(Ask ask)
    {
        askedAt_ = clock_();
        const auto answer = ask();
        asked_ += clock_() - *askedAt_;
        askedAt_.reset();
        return answer;
    }

private:
    std::function<qint64()> clock_;
    std::optional<qint64> askedAt_;
    qint64 asked_ = 0;
};
