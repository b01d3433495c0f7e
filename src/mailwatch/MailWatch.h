#pragma once

#include "mailwatch/HTTPRequest.h"
#include "mailwatch/MailFolder.h"

#include <QObject>

#include <optional>

// The watch over a mailbox's folder: it subscribes, looks for new mail whenever it is told to, and subscribes
// anew, silently, when the subscription has run out.
class MailWatch : public QObject
{
    Q_OBJECT

public:
    enum class Fault {
        NoAccess, // the server refuses the name or the password
        NotSubscribed,
        NoSubscription, // the server agrees but names no subscription
        NotRenewed,
    };

    // Both must outlive the object.
    MailWatch(HttpClient& http, Farewells& farewells);
    ~MailWatch() override;

    // Subscribes; the watch before it ends first. Tells by `subscribed` or `failed`.
    void begin(const MailFolder& folder, const QString& user, const QString& password);
    // Gives up what is under way and ends the subscription. It tells nothing.
    void end();
    // Looks for new mail, unless the watch is off or a look is under way.
    void poll();
    // Switches the looking off and on; the subscription stays.
    void setEnabled(bool enabled);

    // It has subscribed, and neither ended nor failed since.
    bool isRunning() const { return running_; }
    bool isBeginning() const { return request_ && !running_; }
    bool MailWatchEnabled() const { return MailWatchEnabled_; }
    const MailFolder& folder() const { return folder_; }

signals:
    void subscribed();
    // The watch is over.
    void failed(MailWatch::Fault fault);
    void newMail();

private:
    void begun(bool isSubscribed);
    void take(PollResult result);
    void renewed(bool isSubscribed);
    void fail(Fault fault);

    HttpClient& http_;
    Farewells& farewells_;
    MailFolder folder_;
    std::optional<HTTPRequest> request_;
    bool running_ = false;
    bool MailWatchEnabled_ = false;
};
