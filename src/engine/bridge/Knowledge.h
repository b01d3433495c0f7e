#pragma once

#include "engine/bridge/Disco.h"
#include "engine/bridge/Exchange.h"

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QStringList>

#include <functional>
#include <vector>

// What servers, services and rooms are, each asked once a session for its features (XEP-0030): one of today
// tells them, one that speaks the old dialect only answers with an error, or not at all. Home addresses count
// as the server. Of the others only the latest are remembered.
class Knowledge
{
public:
    enum class Kind { Unknown, Asked, OfToday, Old };

    struct Service {
        Kind kind = Kind::Unknown;
        disco::Info info = {};
        // Of one that isn't of today: why. Code 0 when it answered, and named no feature.
        StanzaError error = {0, {}};
    };
    using Step = std::function<void(const Service&)>;

    static constexpr qsizetype mostForeign = 100;

    Knowledge(const HomeAddresses& home, Exchange& exchange) : home_(home), exchange_(exchange) {}

    // A session begins: nothing is known.
    void begin();
    // Asks, unless that address was asked before.
    void learn(const QString& address);
    // Runs `step` now, or as soon as it is known what stands at `address`, which is asked if need be. While
    // too many are being asked, a further one counts as silent.
    void whenKnown(const QString& address, const Step& step);
    // As far as it is known.
    Service at(const QString& address) const;
    bool homeIsOfToday() const;

    // That namespace was asked for in vain: another way will have to do.
    void refuse(const QString& address, const QByteArray& ns);
    bool isRefused(const QString& address, const QByteArray& ns) const;

private:
    struct Entry {
        Service service;
        QSet<QByteArray> refused;
        std::vector<Step> waiting;
    };

    const Entry* find(const QString& address) const;
    // Null when there is no room for one more.
    Entry* entry(const QString& key);
    bool makeRoom();
    void learnt(const QString& key, const Exchange::Answer& answer);

    const HomeAddresses& home_;
    Exchange& exchange_;
    QHash<QString, Entry> entries_;
    // Their keys, the oldest first.
    QStringList foreign_;
};
