#include "desktop/QtSoundPlayer.h"

#include "settings/Module.h"
#include "settings/Paths.h"

#include <QFileInfo>

#include <utility>

QtSoundPlayer::QtSoundPlayer()
    : QtSoundPlayer([] { return module::make<SoundPlayer>(QStringLiteral("breloim_sound")); })
{
}

QtSoundPlayer::QtSoundPlayer(Maker make) : make_(std::move(make))
{
    pending_.setSingleShot(true);
    QObject::connect(&pending_, &QTimer::timeout, &pending_, [this] { play(); });
}

void QtSoundPlayer::PlaySoundFile(const QString& file, bool looped)
{
    file_ = file;
    looped_ = looped;
    if (!pending_.isActive())
        pending_.start(0);
}

void QtSoundPlayer::play()
{
    const QFileInfo file(paths::applicationFile(file_));
    if (!file.isFile())
        return;
    // A module that is missing isn't searched for at every cue.
    if (auto make = std::exchange(make_, nullptr))
        inner_ = make();
    if (inner_)
        inner_->PlaySoundFile(file.absoluteFilePath(), looped_);
}
