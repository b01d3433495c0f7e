#include "desktop/AnimatedGif.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

namespace
{

constexpr qint64 largestFile = 4 * 1024 * 1024;
constexpr int largestCount = 4096;

// The end of a block, then the start of a graphic control extension.
const QByteArray separator = QByteArray::fromRawData("\x00\x21\xf9", 3);

// The little-endian number of two bytes; what lies behind the end counts as 0.
int wordAt(QByteArrayView data, qsizetype at)
{
    const auto byte = [&](qsizetype i) { return i < data.size() ? int(uchar(data[i])) : 0; };
    return byte(at) + byte(at + 1) * 256;
}

QString translated(const char* text)
{
    return QCoreApplication::translate("AnimatedGif", text);
}

} // namespace

int AnimatedGif::LoadGif(const QString& path)
{
    *this = AnimatedGif();
    QFile file(path);
    if (path.isEmpty() || !QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        errorText_ = translated(QT_TRANSLATE_NOOP("AnimatedGif", "File %1 not found")).arg(path);
        return 0;
    }
    data_ = file.read(largestFile);
    if (readHeader())
        cut();
    else
        errorText_ = translated(QT_TRANSLATE_NOOP("AnimatedGif", "This file is not a *.gif file"));
    return count();
}

bool AnimatedGif::readHeader()
{
    const qsizetype first = data_.indexOf(separator);
    if (first < 0)
        return false;
    // It ends within the first separator; each frame begins with the rest of its own.
    headerLength_ = first + 2;
    if (!data_.startsWith("GIF"))
        return false;
    screen_ = QSize(wordAt(data_, 6), wordAt(data_, 8));
    // Behind a palette of 32 colours the loop count has this place.
    if (headerLength_ >= 127)
        repeatTimes_ = wordAt(data_, 125);
    return true;
}

void AnimatedGif::cut()
{
    qsizetype at = headerLength_ - 2;
    qsizetype next = data_.indexOf(separator, at + separator.size());
    while (next >= 0 && count() < largestCount) {
        frames_.append(frameAt(at + 2, next - at));
        at = next;
        next = data_.indexOf(separator, at + separator.size());
    }
}

AnimatedGif::Frame AnimatedGif::frameAt(qsizetype at, qsizetype length) const
{
    const QByteArrayView head = QByteArrayView(data_).sliced(at, qMin<qsizetype>(length, 16));
    // The file counts in hundredths of a second.
    return {at, length, wordAt(head, 3) * 10, QPoint(wordAt(head, 8), wordAt(head, 10))};
}

QByteArray AnimatedGif::gif(int index) const
{
    const Frame& frame = frames_.at(index);
    return data_.first(headerLength_) + data_.sliced(frame.at, frame.length);
}
