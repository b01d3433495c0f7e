#pragma once

#include "engine/ApplicationPlugIn.h"
#include "session/SessionSteps.h"

#include <QStringList>

// Session windows that write down what is asked of them.
class RecordingSteps : public SessionSteps
{
public:
    // A control that writes down which events reached it.
    class Control : public ApplicationPlugIn
    {
    public:
        Control(QStringList& log, QString name) : log_(log), name_(std::move(name)) {}
        void OnIQ(PlugInContext&) override { log_ += name_ + QStringLiteral(".OnIQ"); }
        void OnMessage(PlugInContext&) override { log_ += name_ + QStringLiteral(".OnMessage"); }
        void OnPresence(PlugInContext&) override { log_ += name_ + QStringLiteral(".OnPresence"); }

    private:
        QStringList& log_;
        QString name_;
    };

    QStringList log;
    bool initiated = false;

    bool isInitiated() const override { return initiated; }
    void firstContact(const QString& line) override
    {
        log += QStringLiteral("first:") + line;
        initiated = true;
    }
    void finishSignIn() override { log += QStringLiteral("finish"); }
    void streamConnected() override { log += QStringLiteral("connected"); }
    void backToSignIn() override { log += QStringLiteral("back"); }
    void connectAgain() override { log += QStringLiteral("again"); }
    QString userName() const override { return QStringLiteral("ro&meo"); }
    QString password() const override { return QStringLiteral("<secret>"); }
    ApplicationPlugIn& roster() override { return roster_; }
    ApplicationPlugIn& agents() override { return agents_; }
    ApplicationPlugIn& chat() override { return chat_; }
    void removeContact(const QString& jid) override { log += QStringLiteral("remove:") + jid; }
    void showAdminMenu(const QString& server) override { log += QStringLiteral("admin:") + server; }
    void askAuthorization(PlugInContext&) override { log += QStringLiteral("ask"); }
    void showNotice(PlugInContext&) override { log += QStringLiteral("notice"); }
    void writeNotice(const QString& from, const QString& body, const QString& subject) override
    {
        log += QStringList{"write", from, body, subject}.join(u'|');
    }
    void noticePresence(PlugInContext&) override { log += QStringLiteral("noticePresence"); }

private:
    Control roster_{log, "roster"};
    Control agents_{log, "agents"};
    Control chat_{log, "chat"};
};
