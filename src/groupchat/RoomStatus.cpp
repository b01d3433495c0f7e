#include "groupchat/RoomStatus.h"

#include <QCoreApplication>

namespace roomstatus
{

namespace
{

constexpr RoomStatus all[] = {
    {"", "Online", QT_TRANSLATE_NOOP("RoomStatus", "Available"), 0},
    {"chat", "free4chat", QT_TRANSLATE_NOOP("RoomStatus", "Free For Chat"), 4},
    {"xa", "xAway", QT_TRANSLATE_NOOP("RoomStatus", "Extended Away"), 2},
    {"away", "Away", QT_TRANSLATE_NOOP("RoomStatus", "Away"), 1},
    {"dnd", "dnd", QT_TRANSLATE_NOOP("RoomStatus", "Do Not Disturb"), 3},
};

QString words(const RoomStatus& status)
{
    return QCoreApplication::translate("RoomStatus", status.words);
}

} // namespace

const RoomStatus* ofShow(const QString& show)
{
    for (const auto& status : all) {
        if (show == QLatin1String(status.show))
            return &status;
    }
    return nullptr;
}

QString sentence(const RoomStatus& status, const QString& nick)
{
    return QCoreApplication::translate("RoomStatus", "%1 is now %2").arg(nick, words(status));
}

QString inWords(const QString& imageKey)
{
    for (const auto& status : all) {
        if (imageKey == QLatin1String(status.imageKey))
            return words(status);
    }
    return {};
}

const QStringList& labels()
{
    static const QStringList all{QStringLiteral("Connected"), QStringLiteral("Away"),
                                 QStringLiteral("Xtended Away"), QStringLiteral("Do Not Disturb"),
                                 QStringLiteral("Free for Chat!")};
    return all;
}

std::optional<QString> announcedBy(const QString& label, const QString& imageKey)
{
    struct Row {
        QStringView label; // compared with the entry in lower case
        QStringView imageKey;
        const char* show;
    };
    static constexpr Row rows[] = {
        {u"away", u"Away", "away"},         {u"Xtended Away", u"xAway", "xa"},
        {u"Do Not Disturb", u"dnd", "dnd"}, {u"free for Chat", u"free4chat", "chat"},
        {u"Connected", u"Online", ""},
    };
    const QString chosen = label.toLower();
    for (const auto& row : rows) {
        if (chosen == row.label && imageKey != row.imageKey)
            return QString::fromLatin1(row.show);
    }
    return std::nullopt;
}

} // namespace roomstatus
