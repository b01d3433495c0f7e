#pragma once

#include <QtGlobal>

#include <optional>

// Notices a connection that died without a word: after a minute of silence the server is asked for a sign of
// life, and after half a minute more the connection counts as lost.
class KeepAlive
{
public:
    enum class Verdict { Well, Probe, Dead };

    // `heardMs`: when bytes last arrived.
    Verdict check(qint64 nowMs, qint64 heardMs)
    {
        if (probeMs_ && heardMs >= *probeMs_)
            probeMs_.reset();
        if (probeMs_)
            return nowMs - *probeMs_ > answerMs ? Verdict::Dead : Verdict::Well;
        if (nowMs - heardMs <= idleMs)
            return Verdict::Well;
        probeMs_ = nowMs;
        return Verdict::Probe;
    }
    void reset() { probeMs_.reset(); }

private:
    static constexpr qint64 idleMs = 60'000;
    static constexpr qint64 answerMs = 30'000;

    std::optional<qint64> probeMs_;
};
