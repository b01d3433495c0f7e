#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// What belongs to a status in a room, by the show word of the presence that announces it.
struct RoomStatus {
    const char* show;
    const char* imageKey; // of the shared image list
    const char* words;    // untranslated, context "RoomStatus"
    int label;            // its position in labels()
};

namespace roomstatus
{

// Null for an unknown word.
const RoomStatus* ofShow(const QString& show);
// "Alice is now Away".
QString sentence(const RoomStatus& status, const QString& nick);

// The status that a picture stands for, in words: "Away".
QString inWords(const QString& imageKey);

// The entries of a room's box for the own status, in their order; untranslated.
const QStringList& labels();
// What choosing an entry announces to the room, as show word and as text; null where it announces nothing.
// `imageKey` is the picture that the own entry in the room has now. Kept: only "Away" ever announces itself.
std::optional<QString> announcedBy(const QString& label, const QString& imageKey);

} // namespace roomstatus
