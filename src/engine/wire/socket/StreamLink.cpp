#include "engine/wire/socket/StreamLink.h"

#include "engine/Diagnostics.h"
#include "engine/Xml.h"
#include "engine/wire/socket/CertificateCheck.h"
#include "engine/wire/socket/LinkWords.h"

namespace
{

constexpr qint64 connectTimeoutMs = 20'000;
constexpr qint64 silenceTimeoutMs = 30'000;
constexpr qint64 closeTimeoutMs = 3'000;
constexpr qint64 pieceSize = 16 * 1024;

bool isStreamElement(const Stanza& element, std::string_view name)
{
    return name == element.root().name() && xml::xmlns(element.root()) == "http://etherx.jabber.org/streams";
}

bool isTlsElement(const Stanza& element, std::string_view name)
{
    return name == element.root().name() && xml::xmlns(element.root()) == "urn:ietf:params:xml:ns:xmpp-tls";
}

} // namespace

StreamLink::StreamLink(Target target, const std::function<void()>& wakeUp, qint64 nowMs)
    : target_(std::move(target)), transport_(target_.candidate, target_.domain, target_.proxy, wakeUp),
      nowMs_(nowMs), startMs_(nowMs), heardMs_(nowMs)
{
}

void StreamLink::tick(qint64 nowMs)
{
    nowMs_ = nowMs;
    switch (state_) {
    case State::Connecting:
        return connecting();
    case State::Opening:
        return opening();
    case State::Closing:
        while (!transport_.read(pieceSize).isEmpty()) {
        }
        if (transport_.state() == Transport::State::Closed || nowMs_ - startMs_ > closeTimeoutMs)
            fail(End::Wanted, {});
        return;
    case State::Judging:
    case State::Open:
    case State::Closed:
        return;
    }
}

void StreamLink::connecting()
{
    if (transport_.state() == Transport::State::Open) {
        stage_ = 1;
        heardMs_ = nowMs_;
        if (target_.candidate.directTls)
            judge();
        else
            openStream();
    } else if (transport_.state() == Transport::State::Closed) {
        lost();
    } else if (nowMs_ - startMs_ > connectTimeoutMs) {
        fail(End::NotReached, linkWords::noAnswer(target_.candidate));
    }
}

void StreamLink::judge()
{
    if (!transport_.certificateErrors().isEmpty())
        state_ = State::Judging;
    else
        trustCertificate();
}

CertificateInfo StreamLink::certificate() const
{
    return certificateInfo(target_.domain, transport_.certificate(), transport_.certificateErrors());
}

void StreamLink::trustCertificate()
{
    heardMs_ = nowMs_;
    openStream();
}

void StreamLink::refuseCertificate()
{
    fail(End::Distrust, linkWords::distrusted(target_.domain));
}

void StreamLink::openStream()
{
    parser_.reset();
    features_.reset();
    state_ = State::Opening;
    step_ = Step::Header;
    transport_.write("<?xml version=\"1.0\"?><stream:stream to=\"" + xml::escaped(target_.domain).toUtf8() +
                     "\" version=\"1.0\" xmlns=\"jabber:client\" "
                     "xmlns:stream=\"http://etherx.jabber.org/streams\">");
}

void StreamLink::restartStream()
{
    heardMs_ = nowMs_;
    openStream();
}

void StreamLink::opening()
{
    if (step_ == Step::Handshake) {
        if (transport_.state() == Transport::State::Open)
            judge();
        else if (transport_.state() == Transport::State::Closed)
            lost();
    } else {
        for (auto event = nextEvent(); event != StreamParser::Event::None; event = nextEvent()) {
            if (event == StreamParser::Event::Element)
                handle(*element_);
            else if (!header().hasFeatures && target_.tlsRequired && !isEncrypted())
                fail(End::Refused, linkWords::noTls(target_.domain));
            else if (header().hasFeatures)
                step_ = Step::Features;
            else
                state_ = State::Open;
            if (state_ != State::Opening || step_ == Step::Handshake)
                return;
        }
    }
    if (state_ == State::Opening && nowMs_ - heardMs_ > silenceTimeoutMs)
        fail(End::NotReached, linkWords::silent(target_.candidate));
}

void StreamLink::handle(const Stanza& element)
{
    if (step_ == Step::Features && isStreamElement(element, "features"))
        handleFeatures(element);
    else if (step_ == Step::Proceed && isTlsElement(element, "proceed"))
        startHandshake();
    else if (step_ == Step::Proceed && isTlsElement(element, "failure"))
        fail(End::Refused, linkWords::noTls(target_.domain));
}

void StreamLink::handleFeatures(const Stanza& element)
{
    const auto offer = element.root().child("starttls");
    if (!isEncrypted() && offer && QSslSocket::supportsSsl()) {
        transport_.write("<starttls xmlns=\"urn:ietf:params:xml:ns:xmpp-tls\"/>");
        step_ = Step::Proceed;
    } else if (!isEncrypted() && (target_.tlsRequired || offer.child("required"))) {
        fail(End::Refused, linkWords::noTls(target_.domain));
    } else {
        features_ = element_;
        stage_ = 3;
        state_ = State::Open;
    }
}

void StreamLink::startHandshake()
{
    // What came after <proceed/> came in clear, and may not pass for something said under TLS.
    const bool smuggled = parser_.next() != StreamParser::Event::None || transport_.hasBytes();
    if (smuggled)
        return fail(End::Breach, linkWords::noTls(target_.domain));
    stage_ = 2;
    step_ = Step::Handshake;
    heardMs_ = nowMs_;
    transport_.startTls();
}

// Elements are left in element_. None when nothing whole is there, or when the link has ended.
StreamParser::Event StreamLink::nextEvent()
{
    using Event = StreamParser::Event;
    while (true) {
        switch (parser_.next()) {
        case Event::Opened:
            return Event::Opened;
        case Event::Element:
            element_ = parser_.takeElement();
            if (!isStreamElement(*element_, "error"))
                return Event::Element;
            endedByServer(element_.get());
            return Event::None;
        case Event::Closed:
            endedByServer(nullptr);
            return Event::None;
        case Event::Broken:
            breach();
            return Event::None;
        case Event::None:
            break;
        }
        const QByteArray bytes = transport_.read(pieceSize);
        if (bytes.isEmpty())
            break;
        heardMs_ = nowMs_;
        parser_.feed(bytes);
    }
    if (transport_.state() == Transport::State::Closed)
        lost();
    return Event::None;
}

std::shared_ptr<Stanza> StreamLink::takeElement()
{
    while (state_ == State::Open) {
        const auto event = nextEvent();
        if (event == StreamParser::Event::Element)
            return std::exchange(element_, nullptr);
        if (event == StreamParser::Event::None)
            break;
    }
    return nullptr;
}

void StreamLink::endedByServer(const Stanza* error)
{
    const QString words = linkWords::streamError(target_.domain, error ? error->root() : pugi::xml_node());
    transport_.write("</stream:stream>");
    fail(End::ByServer, words);
}

void StreamLink::lost()
{
    fail(state_ == State::Open ? End::Lost : End::NotReached,
         linkWords::transport(target_.candidate, transport_.failure(), transport_.failureText()));
}

void StreamLink::breach()
{
    const auto& fault = parser_.fault();
    qCWarning(lcEngine) << "the server broke the stream:" << fault.condition << fault.detail;
    transport_.write(fault.xml() + "</stream:stream>");
    const bool isStream = step_ != Step::Header;
    fail(End::Breach, isStream ? linkWords::broken(target_.domain) : linkWords::notJabber(target_.candidate));
}

void StreamLink::fail(End end, const QString& reason)
{
    qCDebug(lcEngine).noquote() << "connection to" << target_.candidate.host << target_.candidate.port
                                << "ended:" << reason;
    state_ = State::Closed;
    end_ = end;
    reason_ = reason;
    transport_.close();
}

void StreamLink::close()
{
    if (state_ == State::Closed || state_ == State::Closing)
        return;
    if (state_ != State::Open && state_ != State::Opening)
        return fail(End::Wanted, {});
    transport_.write("</stream:stream>");
    transport_.flush();
    startMs_ = nowMs_;
    state_ = State::Closing;
}

void StreamLink::drop(const QString& reason)
{
    transport_.abort();
    fail(End::Lost, reason);
}
