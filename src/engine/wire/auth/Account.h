#pragma once

#include "engine/wire/socket/Dialer.h"

#include <QString>

// Who signs in where.
struct Account {
    QString user;
    QString password;
    QString resource;
    Dialer::Goal goal;

    const QString& domain() const { return goal.address.host(); }
    QString bareJid() const { return user + u'@' + domain(); }
    QString fullJid() const { return bareJid() + u'/' + resource; }
};
