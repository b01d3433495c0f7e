#pragma once

#include <QString>

#include <functional>

namespace sandbox
{

class Connection;
class Stanza;

// A person whom the server plays itself: a contact with a presence, who answers as told.
struct Persona {
    enum class Asked { Accepts, Refuses, StaysSilent };

    QString jid; // bare
    QString name;
    QString resource = QStringLiteral("Home");
    QString email;
    bool online = false;
    QString show;
    QString status;
    Asked whenAsked = Asked::Accepts;
    // What the persona does with a message; without it, it only listens.
    std::function<void(Connection& from, const Stanza& message)> hears;

    QString fullJid() const { return jid + u'/' + resource; }
};

} // namespace sandbox
