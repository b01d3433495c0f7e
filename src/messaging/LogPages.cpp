#include "messaging/LogPages.h"

#include "settings/Paths.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

namespace
{

constexpr qint64 longestPage = 256 * 1024; // bytes
constexpr int mostLines = 4000;

bool isInsideOfCharacter(char byte)
{
    return (byte & 0xC0) == 0x80;
}

// Where the page that ends with `bytes` begins: behind the first line end that isn't its own, or at a
// character at least.
qsizetype beginOfPage(const QByteArray& bytes, bool isWhole)
{
    const auto firstEnd = bytes.indexOf('\n');
    qsizetype begin = isWhole || firstEnd == bytes.size() - 1 ? 0 : firstEnd + 1;
    while (!isWhole && begin < bytes.size() && isInsideOfCharacter(bytes[begin]))
        ++begin;
    qsizetype line = bytes.size();
    for (int lines = 0; lines <= mostLines && line > begin; ++lines)
        line = line > 1 ? bytes.lastIndexOf('\n', line - 2) + 1 : 0;
    return qMax(begin, line);
}

// Where the page that begins with `bytes` ends.
qsizetype endOfPage(const QByteArray& bytes, bool isWhole)
{
    qsizetype end = isWhole ? bytes.size() : bytes.lastIndexOf('\n') + 1;
    if (end == 0) {
        end = bytes.size();
        while (end > 1 && isInsideOfCharacter(bytes[end - 1]))
            --end;
        end = qMax<qsizetype>(1, end - 1);
    }
    qsizetype line = 0;
    for (int lines = 0; lines <= mostLines && line < end; ++lines) {
        const auto found = bytes.indexOf('\n', line);
        line = found < 0 ? end : found + 1;
    }
    return qMin(end, line);
}

} // namespace

LogPages::LogPages(const QString& path) : path_(path)
{
    const QFileInfo file(path);
    if (file.exists())
        size_ = begin_ = end_ = file.size();
}

QString LogPages::last(QString* error)
{
    begin_ = end_ = size_;
    return earlier(error);
}

QString LogPages::earlier(QString* error)
{
    end_ = begin_;
    const qint64 from = qMax<qint64>(0, end_ - longestPage);
    const QByteArray bytes = read(from, end_, error);
    const auto begin = beginOfPage(bytes, from == 0);
    begin_ = from + begin;
    return QString::fromUtf8(bytes.mid(begin));
}

QString LogPages::later(QString* error)
{
    begin_ = end_;
    const qint64 to = qMin(size_, begin_ + longestPage);
    const QByteArray bytes = read(begin_, to, error);
    const auto end = endOfPage(bytes, to == size_);
    end_ = bytes.isEmpty() ? size_ : begin_ + end;
    return QString::fromUtf8(bytes.left(end));
}

QByteArray LogPages::read(qint64 from, qint64 to, QString* error) const
{
    QFile file(path_);
    if (paths::open(file, QIODevice::ReadOnly) && file.seek(from))
        return file.read(to - from);
    *error = QCoreApplication::translate("ConversationLog", "The conversation log could not be read: %1")
                 .arg(paths::problem(file));
    return {};
}
