#include "messaging/LogLine.h"

#include <QFile>

#include <algorithm>
#include <array>

namespace
{

constexpr QStringView indent = u"\r\n    ";
constexpr qsizetype slice = 4096;         // UTF-16 units
constexpr qsizetype mostWaiting = 65'536; // bytes

bool breaksLine(QChar c)
{
    const auto u = c.unicode();
    return (u >= 0x0A && u <= 0x0D) || u == 0x85 || u == 0x2028 || u == 0x2029;
}

} // namespace

void LogLine::add(QStringView text)
{
    for (qsizetype at = 0; at < text.size() && isWhole_; at += slice) {
        addSlice(text.mid(at, slice));
        if (waiting_.size() > mostWaiting)
            write();
    }
}

void LogLine::addSlice(QStringView text)
{
    std::array<char16_t, slice * indent.size()> indented; // as much as may come of it
    auto out = indented.begin();
    for (const QChar c : text) {
        if (!breaksLine(c))
            *out++ = c.unicode();
        else if (c != u'\n' || !afterReturn_)
            out = std::copy_n(indent.utf16(), indent.size(), out);
        afterReturn_ = c == u'\r';
    }
    waiting_ += utf8_.encode(QStringView(indented.data(), out - indented.begin()));
}

bool LogLine::end()
{
    waiting_ += utf8_.encode(u"\r\n");
    write();
    return isWhole_;
}

void LogLine::write()
{
    isWhole_ = isWhole_ && file_.write(waiting_) == waiting_.size();
    waiting_.resize(0);
}
