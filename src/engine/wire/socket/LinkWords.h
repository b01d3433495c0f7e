#pragma once

#include "engine/wire/socket/Transport.h"

#include <pugixml.hpp>

// Why a connection didn't come up or ended, in words for the person who waits for it.
namespace linkWords
{

QString transport(const Candidate& candidate, Transport::Failure failure, const QString& systemText);
QString noAnswer(const Candidate& candidate);
QString silent(const Candidate& candidate);
QString notJabber(const Candidate& candidate);
QString noService(const QString& domain);
QString noTls(const QString& domain);
QString distrusted(const QString& domain);
QString stalled(const QString& domain);
QString dead(const QString& domain);
QString sessionGone(const QString& domain);
QString broken(const QString& domain);
// `error` is the server's <stream:error/>, or null when it only closed the stream.
QString streamError(const QString& domain, pugi::xml_node error);

} // namespace linkWords
