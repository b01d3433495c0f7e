#include "support/RecordingDesktop.h"

void RecordingBoxes::stand(const Box& box)
{
    shown += box;
    if (meanwhile)
        std::exchange(meanwhile, {})();
}

MessageBoxes::Answer RecordingBoxes::show(const QString& title, const QString& text, Icon icon,
                                          Buttons buttons)
{
    stand({title, text, icon, buttons});
    if (!answers.isEmpty())
        return answers.takeFirst();
    return buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
}

std::optional<QString> RecordingBoxes::input(const QString& title, const QString& prompt, const QString&)
{
    stand({title, prompt, Icon::None, Buttons::Ok});
    return inputs.isEmpty() ? std::nullopt : inputs.takeFirst();
}

bool RecordingLinks::open(const QString& link)
{
    opened += link;
    return true;
}

void RecordingSounds::PlaySoundFile(const QString& file, bool)
{
    played += file;
}

bool RecordingNetwork::dial(bool unattended)
{
    dials += unattended;
    return true;
}

QString RecordingFiles::openFile(const QString& title, const QString& filter)
{
    asked.append({title, filter});
    return answers.isEmpty() ? QString() : answers.takeFirst();
}

std::optional<int> RecordingLooks::colour(int)
{
    return colours.isEmpty() ? std::nullopt : std::optional(colours.takeFirst());
}

std::optional<FontChoice> RecordingLooks::font(const FontChoice&)
{
    return fonts.isEmpty() ? std::nullopt : std::optional(fonts.takeFirst());
}
