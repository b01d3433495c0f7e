#pragma once

#include "engine/bridge/AgentsAnswer.h"
#include "engine/bridge/BridgePart.h"

#include <QSet>

#include <memory>
#include <vector>

// jabber:iq:agents. The old request goes out as it is; where it is refused the answer is made from service
// discovery. The client's sign-in waits for an answer, so one comes in ten seconds whatever the server does.
class AgentsPart : public BridgePart
{
public:
    void begin() override;
    bool down(const ClientStanza& stanza, BridgeState& state, BridgeOutput& out) override;
    bool up(std::shared_ptr<Stanza>& stanza, BridgeState& state, BridgeOutput& out) override;
    void tick(qint64 nowMs, BridgeState& state, BridgeOutput& out) override;

private:
    struct Job {
        Job(QString askedId, QString askedAddress)
            : id(askedId), address(askedAddress), answer(std::move(askedId), std::move(askedAddress))
        {
        }

        QString id;
        QString address;
        AgentsAnswer answer;
        Deadline deadline;
        // The old request is out, and its answer has still to come.
        bool oldIsOut = true;
        bool answered = false;
    };
    using JobPtr = std::shared_ptr<Job>;

    static void discover(const JobPtr& job, BridgeState& state, BridgeOutput& out);
    static void describeAll(const JobPtr& job, BridgeState& state, BridgeOutput& out);
    static void finish(const JobPtr& job, BridgeOutput& out);
    void dropFinished();

    std::vector<JobPtr> jobs_;
    // Addresses that have refused the old request in this session.
    QSet<QString> refused_;
};
