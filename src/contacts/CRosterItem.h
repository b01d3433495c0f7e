#pragma once

#include <QString>
#include <QStringList>

class CRoster;

// One contact.
struct CRosterItem {
    CRoster* Owner = nullptr;
    bool IsGateway = false;
    QString JID; // bare; the identity of the record
    QString nick;
    bool Online = false;
    QString Status; // a show word, "Offline", "Pending", "Lurker", or "4" for an agent row
    QString StatusMsg;
    QString group;
    QString Subscription;
    QString Ask;
    QStringList Resources; // one empty entry stands for "none known yet"
};
