#pragma once

#include "desktop/Desktop.h"

#include <QTimer>

#include <functional>
#include <memory>

// Plays the client's cues. Cues that come together play as the last of them. What plays them lies in a module
// of its own and is loaded at the first cue whose file exists; without it, or without a sound card, all is
// silent.
class QtSoundPlayer : public SoundPlayer
{
public:
    // Makes the player that takes absolute file names; null when there is none.
    using Maker = std::function<std::unique_ptr<SoundPlayer>()>;

    QtSoundPlayer();
    explicit QtSoundPlayer(Maker make);

    // `file` as a setting names it.
    void PlaySoundFile(const QString& file, bool looped) override;

private:
    void play();

    Maker make_;
    std::unique_ptr<SoundPlayer> inner_;
    QTimer pending_;
    QString file_;
    bool looped_ = false;
};
