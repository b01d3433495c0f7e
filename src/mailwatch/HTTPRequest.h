#pragma once

#include "desktop/Http.h"
#include "mailwatch/PollAnswer.h"

#include <QString>

#include <functional>
#include <memory>

class Farewells;
class MailFolder;

// A subscription to the news of one mailbox folder, as Exchange servers publish it over HTTP: SUBSCRIBE, POLL
// and UNSUBSCRIBE. Answers come from the event loop, within 30 s; a further request, or the object's end,
// gives up the one under way.
class HTTPRequest
{
public:
    // Both must outlive the object.
    HTTPRequest(HttpClient& http, Farewells& farewells, QString user, QString password);
    ~HTTPRequest();

    // The subscription's id from the server; "0" while there is none.
    const QString& SubID() const { return SubID_; }
    // The HTTP status of the last Subscribe; 0 when no whole answer came.
    int Status() const { return Status_; }

    // True when the server answered 200.
    void Subscribe(const MailFolder& folder, std::function<void(bool)> done);
    void Poll(const MailFolder& folder, std::function<void(PollResult)> done);
    // Ends the subscription, where there is one, and doesn't wait for the answer.
    void Unsubscribe(const MailFolder& folder);

    bool isAsking() const { return call_ != nullptr; }
    void giveUp() { call_.reset(); }

private:
    HttpQuestion question(const char* method, const MailFolder& folder) const;
    void ask(const HttpQuestion& question, std::function<void(const HttpAnswer&)> done);

    HttpClient& http_;
    Farewells& farewells_;
    QString user_;
    QString password_;
    QString SubID_ = QStringLiteral("0");
    int Status_ = 0;
    std::unique_ptr<QObject> call_;
};
