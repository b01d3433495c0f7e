#pragma once

#include <QtGlobal>

#include <algorithm>
#include <functional>
#include <iterator>
#include <vector>

// Steps that are to come after a time, on a steady clock whose origin isn't known: a time begins with the
// first tick after it was set.
class Timers
{
public:
    using Step = std::function<void()>;

    void after(qint64 ms, Step step) { waiting_.push_back({ms, notBegun, std::move(step)}); }

    // Takes the steps that are due, in the order in which they were set.
    void tick(qint64 nowMs)
    {
        for (auto& timer : waiting_) {
            if (timer.dueMs == notBegun)
                timer.dueMs = nowMs + timer.ms;
        }
        const auto firstDue = std::stable_partition(
            waiting_.begin(), waiting_.end(), [nowMs](const Timer& timer) { return timer.dueMs > nowMs; });
        const std::vector<Timer> due(std::make_move_iterator(firstDue),
                                     std::make_move_iterator(waiting_.end()));
        waiting_.erase(firstDue, waiting_.end());
        for (const auto& timer : due)
            timer.step();
    }

    void clear() { waiting_.clear(); }

private:
    static constexpr qint64 notBegun = -1;

    struct Timer {
        qint64 ms;
        qint64 dueMs;
        Step step;
    };

    std::vector<Timer> waiting_;
};
