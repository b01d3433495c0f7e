#include "sandbox/Connection.h"

#include "sandbox/Address.h"

#include <QRandomGenerator>

namespace sandbox
{

Connection::Connection(QTcpSocket* socket, const Script& script)
    : socket_(socket), script_(script), outlet_(*socket, script.pace),
      streamId_(QString::number(QRandomGenerator::global()->generate64(), 16))
{
    socket_->setParent(nullptr);
    socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    connect(socket_.get(), &QTcpSocket::readyRead, this, &Connection::read);
    connect(socket_.get(), &QTcpSocket::disconnected, this, &Connection::gone);
}

void Connection::bind(const QString& user, const QString& resource)
{
    user_ = user;
    resource_ = resource;
}

QString Connection::bareJid() const
{
    return address::local(user_);
}

QString Connection::fullJid() const
{
    return bareJid() + u'/' + resource_;
}

void Connection::send(const Element& stanza)
{
    sendText(stanza.xml());
}

void Connection::sendText(const QString& xml)
{
    if (!script_.silent)
        outlet_.write(rendered(xml));
}

QByteArray Connection::rendered(const QString& xml) const
{
    QString text = xml;
    return text.replace(Host, escaped(host_)).toUtf8();
}

void Connection::close(const QString& reason)
{
    if (!reason.isEmpty())
        sendText(Element("stream:error").text(reason).xml());
    sendText(QStringLiteral("</stream:stream>"));
    outlet_.finish();
}

void Connection::read()
{
    const QByteArray bytes = socket_->readAll();
    if (script_.silent)
        return;
    reader_.feed(bytes);
    for (auto event = reader_.next(); event != StreamReader::Event::None; event = reader_.next()) {
        handle(event);
        if (event == StreamReader::Event::Closed || event == StreamReader::Event::Broken)
            return;
    }
}

void Connection::handle(StreamReader::Event event)
{
    switch (event) {
    case StreamReader::Event::Opened:
        open();
        return;
    case StreamReader::Event::Stanza:
        if (std::shared_ptr<Stanza> stanza = Stanza::parsed(reader_.raw(), host_))
            emit stanzaReceived(stanza);
        return;
    case StreamReader::Event::Closed:
        close();
        return;
    case StreamReader::Event::Broken:
        close(QStringLiteral("Invalid XML"));
        return;
    case StreamReader::Event::None:
        return;
    }
}

// The header has no version: a server of the old days, with no features to offer.
void Connection::open()
{
    host_ = reader_.host();
    emit headerReceived(reader_.raw());
    sendText(QStringLiteral("<?xml version=\"1.0\"?><stream:stream xmlns=\"jabber:client\" "
                            "xmlns:stream=\"http://etherx.jabber.org/streams\" id=\"%1\" from=\"%2\">")
                 .arg(streamId_, Host));
}

} // namespace sandbox
