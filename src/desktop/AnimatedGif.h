#pragma once

#include <QByteArray>
#include <QList>
#include <QPoint>
#include <QSize>
#include <QString>

// An animated GIF file cut into single pictures: the file's head with one picture behind it is a complete GIF
// of one frame. The cuts stand at the graphic control extensions; what follows the last of them is never a
// frame, so a file of ours ends with a picture too many.
class AnimatedGif
{
public:
    // Loads `path` in place of what was loaded. Returns the number of frames; 0 on failure, and then
    // errorText() is the text for the person, or empty when the file merely holds no whole frame. Reads 4 MiB
    // at most.
    int LoadGif(const QString& path);

    QString errorText() const { return errorText_; }
    int count() const { return int(frames_.size()); }
    // The index of the last frame, -1 without any.
    int TotalFrames() const { return count() - 1; }
    // The file's loop count, 0 for endless or unknown. Not obeyed: the animation runs until it is stopped.
    int RepeatTimes() const { return repeatTimes_; }
    // The file's logical screen in pixels.
    QSize screenSize() const { return screen_; }

    // Of the frame at `index`, counted from 0 and within count().
    // How long it stands, in milliseconds; 0 means for good.
    int delay(int index) const { return frames_.at(index).delay; }
    // Where it stands in the logical screen, in pixels. The first always stands at the origin.
    QPoint offset(int index) const { return index == 0 ? QPoint() : place(index); }
    // Where its own bytes place it, which a decoder obeys.
    QPoint place(int index) const { return frames_.at(index).place; }
    // It alone, as the bytes of a GIF file. What the pixels hold is unchecked.
    QByteArray gif(int index) const;

private:
    struct Frame {
        qsizetype at;
        qsizetype length;
        int delay;
        QPoint place;
    };

    bool readHeader();
    void cut();
    Frame frameAt(qsizetype at, qsizetype length) const;

    QByteArray data_;
    qsizetype headerLength_ = 0;
    QSize screen_;
    int repeatTimes_ = 0;
    QList<Frame> frames_;
    QString errorText_;
};
