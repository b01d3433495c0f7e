#pragma once

#include "desktop/AnimatedGif.h"

#include <QPixmap>
#include <QTimer>
#include <QWidget>

class MessageBoxes;

// The small animation that runs while a server is asked. One frame is on show at a time and decoded when its
// turn comes; nothing is painted while it stands still.
class WaitAnimation : public QWidget
{
    Q_OBJECT

public:
    explicit WaitAnimation(QWidget* parent = nullptr);

    // Where failures are told. Not owned; without it they pass in silence.
    void setBoxes(MessageBoxes* boxes) { boxes_ = boxes; }
    // Added to the delay of every frame, in milliseconds.
    void setExtraDelay(int milliseconds) { extraDelay_ = milliseconds; }

    // Shows the frames of the GIF file `path` in turn. A file that can't be used gives a box and no
    // animation.
    void Start(const QString& path);
    // Ends the animation and clears the picture.
    void Stop();

    bool isRunning() const { return timer_.isActive(); }
    // The index of the frame on show, -1 when none is.
    int frameOnShow() const { return frame_; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void tick();
    void showFrame(int frame);

    MessageBoxes* boxes_ = nullptr;
    AnimatedGif gif_;
    QTimer timer_;
    QPixmap picture_; // of the whole logical screen
    int frame_ = -1;
    int extraDelay_ = 0;
};
