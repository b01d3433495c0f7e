#include "mailwatch/HTTPRequest.h"

#include "mailwatch/Farewells.h"
#include "mailwatch/MailFolder.h"

#include <utility>

namespace
{

const QByteArray subscriptionId = QByteArrayLiteral("Subscription-id");

bool isWhole(const HttpAnswer& answer)
{
    return answer.outcome == HttpAnswer::Outcome::Whole;
}

} // namespace

HTTPRequest::HTTPRequest(HttpClient& http, Farewells& farewells, QString user, QString password)
    : http_(http), farewells_(farewells), user_(std::move(user)), password_(std::move(password))
{
}

HTTPRequest::~HTTPRequest() = default;

void HTTPRequest::Subscribe(const MailFolder& folder, std::function<void(bool)> done)
{
    auto question = this->question("SUBSCRIBE", folder);
    question.headers = {{"Notification-type", "pragma/<http://schemas.microsoft.com/exchange/newmail>"},
                        {"Subscription-lifetime", "100"},
                        {"Depth", "1"}};
    ask(question, [this, done = std::move(done)](const HttpAnswer& answer) {
        Status_ = isWhole(answer) ? answer.status : 0;
        const bool isTaken = Status_ == 200;
        if (isTaken)
            SubID_ = QString::fromLatin1(answer.header(subscriptionId)).trimmed();
        done(isTaken);
    });
}

void HTTPRequest::Poll(const MailFolder& folder, std::function<void(PollResult)> done)
{
    auto question = this->question("POLL", folder);
    question.headers = {{subscriptionId, SubID_.toLatin1()}};
    // What failed on the way counts as no answer; the next look tries again.
    ask(question, [done = std::move(done)](const HttpAnswer& answer) {
        done(isWhole(answer) ? pollResult(answer.status, QString::fromUtf8(answer.body))
                             : PollResult::Nothing);
    });
}

void HTTPRequest::Unsubscribe(const MailFolder& folder)
{
    giveUp();
    const QString ended = std::exchange(SubID_, QStringLiteral("0"));
    if (ended.isEmpty() || ended == u"0")
        return;
    auto question = this->question("UNSUBSCRIBE", folder);
    question.headers = {{subscriptionId, ended.toLatin1()}};
    farewells_.send(http_, question);
}

HttpQuestion HTTPRequest::question(const char* method, const MailFolder& folder) const
{
    HttpQuestion question;
    question.method = method;
    question.url = folder.address();
    question.user = user_;
    question.password = password_;
    return question;
}

void HTTPRequest::ask(const HttpQuestion& question, std::function<void(const HttpAnswer&)> done)
{
    giveUp();
    call_ = http_.ask(question, [this, done = std::move(done)](const HttpAnswer& answer) {
        giveUp();
        done(answer);
    });
}
