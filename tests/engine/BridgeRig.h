#pragma once

#include "engine/bridge/Bridge.h"
#include "engine/bridge/TranslatorTable.h"

#include <QStringList>

// A bridge in a session of romeo@montague.example, with both its ends in hand.
class BridgeRig
{
public:
    static inline const QString server = QStringLiteral("montague.example");
    static inline const QString ownBare = QStringLiteral("romeo@montague.example");

    explicit BridgeRig(std::vector<TranslatorRow> table = TranslatorTable::standard())
        : bridge_(std::move(table))
    {
        begin();
    }
    void begin() { bridge_.begin({ownBare + "/orchard", server}); }
    // The session's first stanza goes out; the question after the server's features is answered.
    void meetServerOfToday(const QStringList& features = {});
    void meetOldServer();
    // The same, without the answer.
    void meetSilentServer();

    void down(const QString& stanza) { take(bridge_.down(stanza.toUtf8())); }
    void up(const QString& stanza) { take(bridge_.up(Stanza::fromXml(stanza))); }
    void tick(qint64 nowMs) { take(bridge_.tick(nowMs)); }

    // What went out since the last call.
    QStringList takeWire() { return std::exchange(wire_, {}); }
    QStringList takeUp() { return std::exchange(up_, {}); }
    // Answers the open question whose text holds `payload` and goes to `to`: `content` stands in the iq.
    // False when there is no such question.
    bool answer(const QString& to, const QString& payload, const QString& content,
                const QString& type = "result");

private:
    void take(const BridgeOutput& out);

    Bridge bridge_;
    QStringList wire_;
    QStringList up_;
    QStringList questions_;
};

// One that has met a server of today.
struct TodaysRig : BridgeRig {
    explicit TodaysRig(const QStringList& features = {}) { meetServerOfToday(features); }
};
