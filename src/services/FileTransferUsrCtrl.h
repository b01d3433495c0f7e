#pragma once

#include "engine/ApplicationPlugIn.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QHash>
#include <QString>
#include <QStringList>

struct Client;

// Calls: the addresses under which people can be called, told to each other out of band (jabber:iq:oob,
// XEP-0066). The call itself is the business of the desktop's program for callto links.
class FileTransferUsrCtrl : public ApplicationPlugIn
{
    Q_DECLARE_TR_FUNCTIONS(FileTransferUsrCtrl)

public:
    // The client must outlive the object.
    explicit FileTransferUsrCtrl(Client& client) : client_(client) {}

    ApplicationPlugIn* Myapplicationplugin() { return this; }
    // Tells `target`, a JID with its resource where one is known, that this machine can be called. Returns
    // what happened, in a sentence.
    QString invite(const QString& target);

    // Asks the person about the offer of another, or tells that an invitation came back.
    void OnIQ(PlugInContext& context) override;

private:
    // Whoever calls again and again must not keep the person from everything else.
    bool mayAsk(const QString& from) const;
    void ask(PlugInContext& context);
    void open(const QString& from, const QString& link, PlugInContext& context);
    void deny(const QString& from, PlugInContext& context);

    Client& client_;
    QStringList invited_;                // the latest last
    QHash<QString, QDateTime> answered_; // by bare JID; one empty key for all strangers
};
