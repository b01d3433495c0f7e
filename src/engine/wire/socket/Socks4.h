#pragma once

#include <QByteArray>
#include <QString>

// The few bytes that a SOCKS 4 proxy server is asked with, and answers with. Names are sent as 4A tells, so
// that the proxy server looks them up.
namespace socks4
{

// Bytes of an answer.
constexpr int answerSize = 8;

// Asks for a connection to `host`, an IPv4 address or a name. Bytes of the texts that would end them early
// are dropped.
QByteArray request(const QString& host, quint16 port, const QString& user);
bool isGranted(const QByteArray& answer);

} // namespace socks4
