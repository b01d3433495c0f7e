#include "messaging/forms/AuthorizationRequests.h"

#include "contacts/Client.h"
#include "engine/Jid.h"
#include "messaging/forms/authorizeForm.h"

namespace
{

constexpr qsizetype mostWindows = 5;

} // namespace

void AuthorizationRequests::take(const PlugInContext& context)
{
    forgetOldSession();
    const QString from = context.Stanza().From();
    const QString bare = jid::bare(from);
    if (isSettled(from))
        return;
    if (auto* asking = open_.value(bare).data())
        bringUp(*asking);
    else if (open_.size() < mostWindows)
        open(from);
    else if (!waitingJids_.contains(bare)) {
        waitingJids_.insert(bare);
        waiting_.append(from);
    }
}

// Nobody is to be asked.
bool AuthorizationRequests::isSettled(const QString& from) const
{
    return client_.MyBanList.BannedJID(jid::bare(from)) || authorizeForm::answerBySettings(client_, from);
}

// No faster than a person can look: whoever asks in a loop must not keep the desktop busy.
void AuthorizationRequests::bringUp(authorizeForm& form)
{
    constexpr int pause = 1000;
    if (raised_.isValid() && raised_.elapsed() < pause)
        return;
    raised_.start();
    if (form.isMinimized())
        form.showNormal();
    form.show();
    form.raise();
}

void AuthorizationRequests::open(const QString& from)
{
    const QString bare = jid::bare(from);
    auto* form = new authorizeForm(registry_, client_);
    open_.insert(bare, form);
    const auto closed = [this, bare, number = session_] {
        if (number == client_.sessionNumber && open_.remove(bare))
            openNext();
    };
    // The next one comes when this one is gone.
    connect(form, &authorizeForm::closed, this, closed, Qt::QueuedConnection);
    form->setRequest(from);
    form->show();
}

// Who was blocked while waiting is passed over.
void AuthorizationRequests::openNext()
{
    while (!waiting_.isEmpty() && open_.size() < mostWindows) {
        const QString from = waiting_.takeFirst();
        waitingJids_.remove(jid::bare(from));
        if (!isSettled(from))
            open(from);
    }
}

// The end of a session closes its windows, and the server asks again in the next one.
void AuthorizationRequests::forgetOldSession()
{
    if (session_ == client_.sessionNumber)
        return;
    session_ = client_.sessionNumber;
    open_.clear();
    waiting_.clear();
    waitingJids_.clear();
}
