#pragma once

#include "engine/ConnectionHost.h"

#include <QCoreApplication>
#include <QPointer>

class CertificateForm;
class SessionWindows;
class SettingsStore;
struct Client;

// What the engine tells and asks while a connection is made: its progress in the progress window, its
// questions to the person, and what they answered for good in the settings.
class ConnectionUi : public ConnectionHost
{
    Q_DECLARE_TR_FUNCTIONS(ConnectionUi)

public:
    // All must outlive the object.
    ConnectionUi(Client& client, SessionWindows& windows, SettingsStore& store);

    // What was told last of the connection that was begun last; empty when nothing was.
    const QString& reason() const { return reason_; }
    // A connection begins: what was told of the one before is forgotten.
    void begin() { reason_.clear(); }
    // A question that still stands goes, unanswered.
    void withdraw();

    void connectionProgress(const QString& text) override;
    CertificateAnswer askCertificate(const CertificateInfo& info) override;
    bool allowPlainPassword(const QString& server) override;
    QByteArray pinnedCertificate(const QString& server) override;
    void pinCertificate(const QString& server, const QByteArray& sha256) override;
    std::optional<Safety> lastSafety(const QString& account) override;
    void keepSafety(const QString& account, const Safety& reached) override;
    bool allowLess(const QString& account, const Safety& before, const Safety& now) override;

private:
    Client& client_;
    SessionWindows& windows_;
    SettingsStore& store_;
    QString reason_;
    QPointer<CertificateForm> question_;
};
