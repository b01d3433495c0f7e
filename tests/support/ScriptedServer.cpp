#include "support/ScriptedServer.h"

#include "support/TestCertificate.h"

#include <QRegularExpression>

ScriptedServer::ScriptedServer()
{
    listen(QHostAddress::LocalHost);
}

QString ScriptedServer::address() const
{
    return QStringLiteral("127.0.0.1:%1").arg(serverPort());
}

QByteArray ScriptedServer::header(bool withVersion)
{
    return QByteArrayLiteral(
               "<?xml version='1.0'?><stream:stream xmlns='jabber:client' id='s1' from='127.0.0.1' "
               "xmlns:stream='http://etherx.jabber.org/streams'") +
           (withVersion ? " version='1.0'>" : ">");
}

void ScriptedServer::on(const QByteArray& awaited, const QByteArray& answer, Then then)
{
    steps_.append({awaited, answer, then});
}

void ScriptedServer::onLegacySignIn()
{
    on("<stream:stream", header(false));
    on("</iq>",
       "<iq type='result' id='$id'><query xmlns='jabber:iq:auth'><username/><digest/><resource/></query>"
       "</iq>");
    on("</iq>", "<iq type='result' id='$id'/>");
}

void ScriptedServer::onSasl(const QByteArray& features)
{
    on("<stream:stream", header() + "<stream:features><mechanisms xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>"
                                    "<mechanism>PLAIN</mechanism></mechanisms></stream:features>");
    on("</auth>", "<success xmlns='urn:ietf:params:xml:ns:xmpp-sasl'/>");
    on("<stream:stream", header() + "<stream:features><bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'/>" +
                             features + "</stream:features>");
}

void ScriptedServer::onSaslSignIn(const QByteArray& features)
{
    onSasl(features);
    on("</iq>", "<iq type='result' id='$id'><bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'>"
                "<jid>romeo@127.0.0.1/orchard</jid></bind></iq>");
}

void ScriptedServer::incomingConnection(qintptr descriptor)
{
    ++connections_;
    received_.clear();
    seen_ = 0;
    peer_ = new QSslSocket(this);
    peer_->setSocketDescriptor(descriptor);
    peer_->setLocalCertificate(testCertificate::certificate());
    peer_->setPrivateKey(testCertificate::key());
    connect(peer_, &QSslSocket::readyRead, this, &ScriptedServer::takeIn);
    if (directTls_)
        peer_->startServerEncryption();
}

void ScriptedServer::takeIn()
{
    if (sender() == peer_)
        received_ += peer_->readAll();
    while (!steps_.isEmpty()) {
        const auto at = received_.indexOf(steps_.first().awaited, seen_);
        if (at < 0)
            return;
        seen_ = at + steps_.first().awaited.size();
        act(steps_.takeFirst());
    }
}

void ScriptedServer::act(const Step& step)
{
    static const QRegularExpression ids(" id=\"([^\"]*)\"");
    QByteArray id;
    auto matches = ids.globalMatch(QString::fromUtf8(received_.first(seen_)));
    while (matches.hasNext())
        id = matches.next().captured(1).toUtf8();
    write(QByteArray(step.answer).replace("$id", id));
    if (step.then == Then::StartTls)
        peer_->startServerEncryption();
    else if (step.then == Then::Close)
        hangUp();
    else if (step.then == Then::Abort)
        peer_->abort();
}

void ScriptedServer::write(const QByteArray& text)
{
    const qsizetype piece = pieces_ ? pieces_ : qMax<qsizetype>(text.size(), 1);
    for (qsizetype at = 0; at < text.size(); at += piece) {
        peer_->write(text.mid(at, piece));
        peer_->flush();
    }
}

void ScriptedServer::say(const QByteArray& text)
{
    write(text);
}
void ScriptedServer::hangUp()
{
    peer_->disconnectFromHost();
}
