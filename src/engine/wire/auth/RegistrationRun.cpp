#include "engine/wire/auth/RegistrationRun.h"

#include "engine/Xml.h"
#include "engine/wire/socket/LinkWords.h"

namespace
{

constexpr qint64 silenceTimeoutMs = 30'000;

} // namespace

RegistrationRun::RegistrationRun(Account account, QByteArray stanza, const DialContext& context,
                                 std::function<bool()> askPlain, std::shared_ptr<SafetyGuard> guard,
                                 qint64 nowMs)
    : account_(std::move(account)), stanza_(std::move(stanza)), askPlain_(std::move(askPlain)),
      guard_(std::move(guard)), dialer_(account_.goal, context, nowMs)
{
}

bool RegistrationRun::isRequest(const QByteArray& stanza)
{
    if (!stanza.contains("VRX_new"))
        return false;
    const auto document = xml::parsed(QString::fromUtf8(stanza));
    const auto iq = document ? document->document_element() : pugi::xml_node();
    return std::string_view(iq.attribute("id").value()) == "VRX_new" &&
           xml::xmlns(iq.child("query")) == "jabber:iq:register";
}

void RegistrationRun::begin()
{
    AuthRequest request{account_.user, account_.password, account_.domain(), account_.resource};
    request.encrypted = link() && link()->isEncrypted();
    request.verified = link() && link()->isVerified();
    request.askPlain = askPlain_;
    request.guard = guard_;
    registration_ = std::make_unique<AccountRegistration>(std::move(request), stanza_);
}

void RegistrationRun::tick(qint64 nowMs)
{
    if (registration_ && registration_->state() == AccountRegistration::State::Done)
        return;
    dialer_.tick(nowMs);
    if (dialer_.state() == Dialer::State::Failed)
        fail(dialer_.reason());
    else if (dialer_.state() == Dialer::State::Open)
        converse(nowMs);
}

void RegistrationRun::converse(qint64 nowMs)
{
    auto& link = *dialer_.link();
    link.tick(nowMs);
    if (!std::exchange(opened_, true)) {
        begin();
        registration_->streamOpened(link.features());
        writeOutput();
    }
    while (registration_->state() == AccountRegistration::State::Working) {
        const auto element = link.takeElement();
        if (!element)
            break;
        registration_->feed(*element);
        writeOutput();
    }
    if (registration_->state() == AccountRegistration::State::Done)
        return link.close();
    if (link.state() == StreamLink::State::Closed)
        fail(link.reason());
    else if (nowMs - link.lastHeardMs() > silenceTimeoutMs)
        fail(linkWords::stalled(account_.domain()));
}

void RegistrationRun::writeOutput()
{
    const auto texts = registration_->takeOutput();
    for (const auto& text : texts)
        link()->write(text);
}

void RegistrationRun::fail(const QString& reason)
{
    if (!registration_)
        begin();
    registration_->fail(reason);
}

std::shared_ptr<Stanza> RegistrationRun::takeResult()
{
    return registration_ ? registration_->takeResult() : nullptr;
}
