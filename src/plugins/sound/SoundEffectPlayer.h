#pragma once

#include "desktop/Desktop.h"

#include <QSoundEffect>

// Plays wave files by Qt Multimedia. Takes absolute file names.
class SoundEffectPlayer : public SoundPlayer
{
public:
    void PlaySoundFile(const QString& file, bool looped) override;

private:
    QSoundEffect effect_;
};
