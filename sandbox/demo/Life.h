#pragma once

#include "sandbox/SandboxServer.h"

#include <QRandomGenerator>

namespace sandbox::demo
{

// What happens by itself in the demo's world: contacts come, go and change their minds, two people talk in
// the room, somebody asks to be a friend, one answers all that is said to her and calls whoever says "call
// me", and the server has news.
class Life : public QObject
{
    Q_OBJECT
public:
    // The world is populated already and outlives this. The same seed gives the same life.
    explicit Life(SandboxServer& server, quint32 seed = 7);

private:
    void every(int milliseconds, void (Life::*happens)());
    void changeSomebody();
    void talk();
    void tellNews();
    void askSoon(const QString& user);
    void echo(const QString& bareJid, const QString& body);
    void sendFromEcho(const QString& bareJid, const Element& content);

    SandboxServer& server_;
    QRandomGenerator random_;
    int line_ = 0;
    int news_ = 0;
};

} // namespace sandbox::demo
