#pragma once

#include "session/SessionSteps.h"

#include <QStringList>

// The steps of a session, written down as they are asked for.
class RecordingSteps : public SessionSteps
{
public:
    QStringList log;
    bool initiated = false;

    bool isInitiated() const override { return initiated; }
    void firstContact(const QString& line) override
    {
        log += QStringLiteral("first:") + line;
        initiated = true;
    }
    void finishSignIn() override { log += QStringLiteral("finish"); }
    void backToSignIn() override { log += QStringLiteral("back"); }
    void connectAgain() override { log += QStringLiteral("again"); }
    QString userName() const override { return QStringLiteral("ro&meo"); }
    QString password() const override { return QStringLiteral("<secret>"); }
    void removeContact(const QString& jid) override { log += QStringLiteral("remove:") + jid; }
    void showAdminMenu(const QString& server) override { log += QStringLiteral("admin:") + server; }
    void writeNotice(const QString& from, const QString& body, const QString& subject) override
    {
        log += QStringList{"write", from, body, subject}.join(u'|');
    }
};
