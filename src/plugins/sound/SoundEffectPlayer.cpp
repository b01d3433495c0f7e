#include "plugins/sound/SoundEffectPlayer.h"

#include <QUrl>

void SoundEffectPlayer::PlaySoundFile(const QString& file, bool looped)
{
    effect_.stop();
    effect_.setSource(QUrl::fromLocalFile(file));
    effect_.setLoopCount(looped ? QSoundEffect::Infinite : 1);
    effect_.play();
}

extern "C" Q_DECL_EXPORT void* breloMake()
{
    return static_cast<SoundPlayer*>(new SoundEffectPlayer);
}
