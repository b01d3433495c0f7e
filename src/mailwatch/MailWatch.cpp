#include "mailwatch/MailWatch.h"

MailWatch::MailWatch(HttpClient& http, Farewells& farewells) : http_(http), farewells_(farewells) {}

MailWatch::~MailWatch()
{
    end();
}

void MailWatch::begin(const MailFolder& folder, const QString& user, const QString& password)
{
    end();
    folder_ = folder;
    request_.emplace(http_, farewells_, user, password);
    request_->Subscribe(folder_, [this](bool isSubscribed) { begun(isSubscribed); });
}

void MailWatch::end()
{
    if (request_)
        request_->Unsubscribe(folder_);
    request_.reset();
    running_ = MailWatchEnabled_ = false;
}

void MailWatch::begun(bool isSubscribed)
{
    if (!isSubscribed)
        return fail(Fault::NotSubscribed);
    if (request_->SubID().isEmpty() || request_->SubID() == u"0")
        return fail(Fault::NoSubscription);
    running_ = MailWatchEnabled_ = true;
    emit subscribed();
}

void MailWatch::poll()
{
    if (MailWatchEnabled_ && !request_->isAsking())
        request_->Poll(folder_, [this](PollResult result) { take(result); });
}

void MailWatch::setEnabled(bool enabled)
{
    MailWatchEnabled_ = enabled && running_;
    if (!enabled && request_)
        request_->giveUp();
}

void MailWatch::take(PollResult result)
{
    if (result == PollResult::NewMail)
        emit newMail();
    else if (result == PollResult::RunOut)
        request_->Subscribe(folder_, [this](bool isSubscribed) { renewed(isSubscribed); });
}

void MailWatch::renewed(bool isSubscribed)
{
    if (!isSubscribed)
        fail(Fault::NotRenewed);
}

void MailWatch::fail(Fault fault)
{
    const bool isRefused = request_->Status() == 401 && fault != Fault::NoSubscription;
    end();
    emit failed(isRefused ? Fault::NoAccess : fault);
}
