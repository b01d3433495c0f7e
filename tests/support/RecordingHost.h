#pragma once

#include "engine/ConnectionHost.h"

#include <QHash>
#include <QList>

#include <functional>

// The person before the connection, written down. Answers are preset; what happens while a question stands
// can be given as a function.
class RecordingHost : public ConnectionHost
{
public:
    QStringList progress;
    QList<CertificateInfo> certificates;
    QStringList plainQuestions;
    QHash<QString, QByteArray> pins;
    CertificateAnswer certificateAnswer = CertificateAnswer::AcceptOnce;
    bool plainAnswer = true;
    QHash<QString, Safety> safeties;
    QList<Safety> lessQuestions;
    bool lessAnswer = false;
    std::function<void()> duringQuestion = [] {};

    void connectionProgress(const QString& text) override { progress += text; }
    CertificateAnswer askCertificate(const CertificateInfo& info) override
    {
        certificates += info;
        duringQuestion();
        return certificateAnswer;
    }
    bool allowPlainPassword(const QString& server) override
    {
        plainQuestions += server;
        duringQuestion();
        return plainAnswer;
    }
    QByteArray pinnedCertificate(const QString& server) override { return pins.value(server); }
    void pinCertificate(const QString& server, const QByteArray& sha256) override { pins[server] = sha256; }
    std::optional<Safety> lastSafety(const QString& account) override
    {
        return safeties.contains(account) ? std::optional(safeties[account]) : std::nullopt;
    }
    void keepSafety(const QString& account, const Safety& reached) override { safeties[account] = reached; }
    bool allowLess(const QString&, const Safety&, const Safety& now) override
    {
        lessQuestions += now;
        duringQuestion();
        return lessAnswer;
    }
};
