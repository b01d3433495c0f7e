#pragma once

#include "engine/bridge/Disco.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

class Stanza;

// A jabber:iq:agents answer in the making, from what service discovery (XEP-0030) tells about each service.
class AgentsAnswer
{
public:
    // `id` and `from` are those that the asker waits for.
    AgentsAnswer(QString id, QString from) : id_(std::move(id)), from_(std::move(from)) {}

    // The services, of which nothing but the items is known yet. Items with a node are no services of their
    // own.
    void setItems(const QList<disco::Item>& items);
    std::size_t count() const { return agents_.size(); }
    const QString& jid(std::size_t index) const { return agents_[index].jid; }
    // `info` is empty for a service that didn't answer; it isn't kept.
    void describe(std::size_t index, const disco::Info& info);
    bool isComplete() const { return described_ == agents_.size(); }

    std::shared_ptr<Stanza> stanza() const;

private:
    struct Agent {
        QString jid;
        QString name;
        QString service;
        bool isGateway = false;
        // <register/> and the like.
        QString flags;
    };

    static QString element(const Agent& agent);

    QString id_;
    QString from_;
    std::vector<Agent> agents_;
    std::size_t described_ = 0;
};
