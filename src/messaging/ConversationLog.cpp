#include "messaging/ConversationLog.h"

#include "contacts/Client.h"
#include "engine/Jid.h"
#include "messaging/FileComponent.h"
#include "settings/Paths.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace
{

QString lineEnd()
{
    return QStringLiteral("\r\n");
}

bool breaksLine(QChar c)
{
    const auto u = c.unicode();
    return (u >= 0x0A && u <= 0x0D) || u == 0x85 || u == 0x2028 || u == 0x2029;
}

// What follows a line break is indented, so that it can't look like another line of the log. A text can be
// millions of line breaks: the room is made once.
QString asOneLine(const QString& text)
{
    constexpr QStringView indent = u"\r\n    ";
    const auto breaks = std::count_if(text.begin(), text.end(), breaksLine);
    QString line(text.size() + breaks * (indent.size() - 1), Qt::Uninitialized);
    QChar* out = line.data();
    for (const QChar *at = text.begin(), *end = text.end(); at != end; ++at) {
        if (*at == u'\r' && at + 1 != end && at[1] == u'\n')
            continue;
        out = breaksLine(*at) ? std::copy(indent.begin(), indent.end(), out) : (*out = *at, out + 1);
    }
    line.truncate(out - line.constData());
    return line + lineEnd();
}

constexpr auto ownerOnly = QFile::ReadOwner | QFile::WriteOwner;

QString failure(const QString& path, const QFile& file)
{
    return QCoreApplication::translate("ConversationLog",
                                       "The conversation log \"%1\" could not be written: %2")
        .arg(path, paths::problem(file));
}

bool openMakingFolder(QFile& file)
{
    const auto mode = QIODevice::Append | QIODevice::Unbuffered;
    paths::makePrivateFile(file.fileName());
    if (file.open(mode, ownerOnly))
        return true;
    const QString folder = QFileInfo(file).path();
    return !QFileInfo::exists(folder) && paths::makePrivateFolder(folder) && file.open(mode, ownerOnly);
}

} // namespace

ConversationLog::ConversationLog(const Client& client, Stamps& stamps) : client_(client), stamps_(stamps) {}

QString ConversationLog::WriteLogHeader(const QString& peer)
{
    const QString bare = jid::bare(peer);
    return append(bare, lineEnd() + asOneLine(QStringLiteral("*** New chat window with ") + bare +
                                              QStringLiteral(" at ") + stamps_.longTime() + u' ' +
                                              stamps_.longDate()));
}

QString ConversationLog::WriteLogLine(const QString& body, const QString& from, const QString& to, bool useTo,
                                      const QDateTime& written)
{
    return append(
        jid::bare(useTo ? to : from),
        asOneLine(from + QStringLiteral(" (") + stamps_.longTime(written) + QStringLiteral("): ") + body));
}

QString ConversationLog::WriteReturned(const QString& body, const QString& peer, bool uncertain)
{
    const QString what =
        uncertain ? QStringLiteral("*** May not have arrived (") : QStringLiteral("*** Not sent (");
    return append(jid::bare(peer), asOneLine(what + stamps_.longTime() + QStringLiteral("): ") + body));
}

QString ConversationLog::ClearMessageLog(const QString& peer)
{
    const QString file = path(peer);
    QFile log(file);
    if (!log.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered, ownerOnly) ||
        log.write("\r\n") != 2)
        return failure(file, log);
    return {};
}

bool ConversationLog::isHeaderLine(const QString& line)
{
    return QStringView(line).left(25) == u"*** New chat window with";
}

QString ConversationLog::path(const QString& peer) const
{
    const QString account = client_.Gateway().Server() + QChar() + client_.Gateway().UserName();
    if (pathsOf_ != account) {
        paths_.clear();
        pathsOf_ = account;
        // Older versions left files in it that others can read.
        if (QFileInfo::exists(paths::logFolder()))
            paths::makePrivateFolder(paths::logFolder());
    }
    QString& path = paths_[jid::bare(peer)];
    if (path.isEmpty())
        path = paths::logFolder() + u'/' + fileComponent(client_.Gateway().Server()) + u'/' +
               fileComponent(client_.Gateway().UserName()) + u'/' +
               fileComponent(jid::bare(peer), QStringLiteral(".log"));
    return path;
}

QString ConversationLog::append(const QString& peer, const QString& text)
{
    const QString file = path(peer);
    QFile log(file);
    if (!openMakingFolder(log))
        return failure(file, log);
    const QByteArray bytes = text.toUtf8();
    const qint64 before = log.size();
    if (log.write(bytes) == bytes.size())
        return {};
    const QString error = failure(file, log);
    if (!log.isSequential())
        log.resize(before);
    return error;
}
