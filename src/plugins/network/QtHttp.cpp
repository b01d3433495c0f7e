#include "plugins/network/QtHttp.h"

#include "engine/wire/auth/HttpChallenge.h"

#include <QAuthenticator>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRandomGenerator>
#include <QThread>
#include <QTimer>

namespace
{

using Outcome = HttpAnswer::Outcome;

// One question under way.
class HttpCall : public QObject
{
public:
    HttpCall(const HttpQuestion& question, HttpClient::Done done);
    ~HttpCall() override;

private:
    void send();
    void sendRequest();
    void authenticate(QAuthenticator& authenticator);
    bool offerPassword();
    void takeIn();
    void giveUp(Outcome why);
    void finish();
    void tell();
    Outcome outcome() const;

    HttpQuestion question_;
    HttpClient::Done done_;
    std::unique_ptr<QNetworkAccessManager> manager_ = std::make_unique<QNetworkAccessManager>();
    QNetworkReply* reply_ = nullptr; // the manager's
    QTimer limit_;
    HttpAnswer answer_;
    bool isGivenUp_ = false;
    bool isPasswordGiven_ = false;
    bool takesSteps_ = false; // the system does the offering
    QByteArray authorization_;
    bool isAtRest_ = true; // nothing is sent or taken in
};

bool isAskable(const QUrl& url)
{
    const QString scheme = url.scheme();
    return url.isValid() && !url.host().isEmpty() && (scheme == u"http" || scheme == u"https");
}

HttpCall::HttpCall(const HttpQuestion& question, HttpClient::Done done)
    : question_(question), done_(std::move(done))
{
    manager_->setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);
    connect(manager_.get(), &QNetworkAccessManager::authenticationRequired, this,
            [this](QNetworkReply*, QAuthenticator* authenticator) { authenticate(*authenticator); });
    limit_.setSingleShot(true);
    connect(&limit_, &QTimer::timeout, this, [this] { giveUp(Outcome::TimedOut); });
    limit_.start(qMax(0, question_.mostMs));
    QTimer::singleShot(0, this, &HttpCall::send);
}

// A manager's end waits seconds for its thread, which a server that never stops sending keeps busy: what is
// under way ends aside.
HttpCall::~HttpCall()
{
    if (isAtRest_)
        return;
    reply_->disconnect(this);
    reply_->abort();
    auto* manager = manager_.release();
    auto* aside = QThread::create([manager] { delete manager; });
    connect(aside, &QThread::finished, aside, &QObject::deleteLater);
    manager->moveToThread(aside);
    aside->start();
}

void HttpCall::send()
{
    if (isGivenUp_)
        return tell();
    if (!isAskable(question_.url)) {
        answer_.outcome = Outcome::BadUrl;
        return tell();
    }
    sendRequest();
}

void HttpCall::sendRequest()
{
    QUrl url = question_.url;
    url.setUserInfo({});
    QNetworkRequest request(url);
    // Nothing is unpacked behind the bound's back.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    for (const auto& [name, value] : std::as_const(question_.headers))
        request.setRawHeader(name, value);
    if (!authorization_.isEmpty())
        request.setRawHeader("Authorization", authorization_);
    reply_ = manager_->sendCustomRequest(request, question_.method, question_.body);
    isAtRest_ = false;
    reply_->setReadBufferSize(question_.mostBytes + 1);
    connect(reply_, &QNetworkReply::readyRead, this, &HttpCall::takeIn);
    connect(reply_, &QNetworkReply::finished, this, &HttpCall::finish);
}

void HttpCall::authenticate(QAuthenticator& authenticator)
{
    if (!std::exchange(takesSteps_, false))
        return;
    authenticator.setUser(question_.user);
    authenticator.setPassword(question_.password);
}

// A password that was refused is not offered again: the server's own answer tells the rest. The system offers
// it for ever to a server that calls its challenge stale, or another one, every time: it is left only what
// takes steps.
bool HttpCall::offerPassword()
{
    if (answer_.status != 401 || question_.user.isEmpty() || std::exchange(isPasswordGiven_, true))
        return false;
    const HttpChallenge challenge(answer_.header("WWW-Authenticate"));
    takesSteps_ = challenge.scheme() == HttpChallenge::Scheme::Token;
    const QUrl& url = question_.url;
    const QByteArray path = url.path(QUrl::FullyEncoded).toLatin1();
    const QByteArray query = url.hasQuery() ? '?' + url.query(QUrl::FullyEncoded).toLatin1() : QByteArray();
    authorization_ = challenge.answer(question_.method, (path.isEmpty() ? "/" : path) + query,
                                      question_.user.toUtf8(), question_.password.toUtf8(),
                                      QByteArray::number(QRandomGenerator::system()->generate64(), 16));
    if (!takesSteps_ && authorization_.isEmpty())
        return false;
    answer_ = {};
    // Once this one's connection is free: NTLM proves who holds it.
    QTimer::singleShot(0, this, &HttpCall::sendRequest);
    return true;
}

void HttpCall::takeIn()
{
    answer_.body += reply_->read(question_.mostBytes + 1 - answer_.body.size());
    if (answer_.body.size() > question_.mostBytes)
        giveUp(Outcome::TooLarge);
}

void HttpCall::giveUp(Outcome why)
{
    if (std::exchange(isGivenUp_, true))
        return;
    answer_.outcome = why;
    if (reply_)
        reply_->abort();
}

void HttpCall::finish()
{
    if (!isGivenUp_) {
        isAtRest_ = true;
        answer_.body += reply_->readAll();
        answer_.outcome = answer_.body.size() > question_.mostBytes ? Outcome::TooLarge : outcome();
    }
    answer_.status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    for (const auto& [name, value] : reply_->rawHeaderPairs())
        answer_.headers.append({name, value});
    if (answer_.outcome == Outcome::Whole && offerPassword())
        return;
    limit_.stop();
    // Outside of the reply's own signal: the one who asked may delete this.
    QTimer::singleShot(0, this, &HttpCall::tell);
}

void HttpCall::tell()
{
    const auto answer = std::exchange(answer_, {});
    std::exchange(done_, {})(answer);
}

Outcome HttpCall::outcome() const
{
    const auto error = reply_->error();
    const bool hasStatus = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid();
    // From there on the errors only repeat what the status says.
    if (hasStatus && (error == QNetworkReply::NoError || error >= QNetworkReply::ContentAccessDenied))
        return Outcome::Whole;
    return error == QNetworkReply::SslHandshakeFailedError ? Outcome::Distrusted : Outcome::Unreachable;
}

} // namespace

std::unique_ptr<QObject> QtHttp::ask(const HttpQuestion& question, Done done)
{
    return std::make_unique<HttpCall>(question, std::move(done));
}
