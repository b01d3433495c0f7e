#include "messaging/ConversationLog.h"

#include "contacts/Client.h"
#include "engine/Jid.h"
#include "messaging/FileComponent.h"
#include "messaging/LogLine.h"
#include "settings/Paths.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

namespace
{

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
    if (paths::open(file, mode))
        return true;
    const QString folder = QFileInfo(file).path();
    return !QFileInfo::exists(folder) && paths::makePrivateFolder(folder) && paths::open(file, mode);
}

} // namespace

ConversationLog::ConversationLog(const Client& client, Stamps& stamps) : client_(client), stamps_(stamps) {}

QString ConversationLog::WriteLogHeader(const QString& peer)
{
    const QString bare = jid::bare(peer);
    const QString header = QStringLiteral("*** New chat window with ") + bare + QStringLiteral(" at ") +
                           stamps_.longTime() + u' ' + stamps_.longDate();
    return append(bare, header, {}, true);
}

QString ConversationLog::WriteLogLine(const QString& body, const QString& from, const QString& to, bool useTo,
                                      const QDateTime& written)
{
    return append(jid::bare(useTo ? to : from),
                  from + QStringLiteral(" (") + stamps_.longTime(written) + QStringLiteral("): "), body);
}

QString ConversationLog::WriteReturned(const QString& body, const QString& peer, bool uncertain)
{
    const QString what =
        uncertain ? QStringLiteral("*** May not have arrived (") : QStringLiteral("*** Not sent (");
    return append(jid::bare(peer), what + stamps_.longTime() + QStringLiteral("): "), body);
}

QString ConversationLog::ClearMessageLog(const QString& peer)
{
    const QString file = path(peer);
    QFile log(file);
    if (!paths::open(log, QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered) ||
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

QString ConversationLog::append(const QString& peer, const QString& head, const QString& body,
                                bool afterBlankLine)
{
    const QString file = path(peer);
    QFile log(file);
    if (!openMakingFolder(log))
        return failure(file, log);
    const qint64 before = log.size();
    LogLine line(log);
    if (afterBlankLine)
        line.end();
    line.add(head);
    line.add(body);
    if (line.end())
        return {};
    const QString error = failure(file, log);
    if (!log.isSequential())
        log.resize(before);
    return error;
}
