#pragma once

#include "sandbox/Element.h"
#include "sandbox/Outlet.h"
#include "sandbox/Stanza.h"
#include "sandbox/StreamReader.h"

#include <QTcpSocket>

#include <memory>

namespace sandbox
{

// What a resource last said of itself.
struct Presence {
    bool available = false;
    int priority = 0;
    QString content; // show, status and the rest, as XML
};

// One client's stream, from the accepted socket to its end.
class Connection : public QObject
{
    Q_OBJECT
public:
    // Takes the socket. The script is not owned.
    Connection(QTcpSocket* socket, const Script& script);
    ~Connection() override { socket_->disconnect(this); }

    // The name by which the client knows the server.
    QString host() const { return host_; }
    QString streamId() const { return streamId_; }

    bool isBound() const { return !user_.isEmpty(); }
    void bind(const QString& user, const QString& resource);
    QString user() const { return user_; }
    QString bareJid() const;
    QString fullJid() const;

    Presence presence;

    void send(const Element& stanza);
    // Text as it stands, save that the host's mark becomes the host's name.
    void sendText(const QString& xml);
    void pour(std::function<QByteArray()> source) { outlet_.pour(std::move(source)); }
    // `xml` as this client sees it.
    QByteArray rendered(const QString& xml) const;

    // Ends the stream, after a stream error where a reason is given.
    void close(const QString& reason = {});
    void abort() { socket_->abort(); }
    void resume() { outlet_.pump(); }

signals:
    void headerReceived(const QByteArray& raw);
    void stanzaReceived(const std::shared_ptr<sandbox::Stanza>& stanza);
    void gone();

private:
    void read();
    void open();
    void handle(StreamReader::Event event);

    std::unique_ptr<QTcpSocket> socket_;
    const Script& script_;
    Outlet outlet_;
    StreamReader reader_;
    QString host_;
    QString streamId_;
    QString user_;
    QString resource_;
};

} // namespace sandbox
