#include "contacts/StatusRules.h"

#include "contacts/Client.h"
#include "contacts/RosterStanzas.h"

#include <QCoreApplication>
#include <QHash>

namespace statusrules
{

const std::array<StatusRule, 5>& all()
{
    static constexpr std::array<StatusRule, 5> rules{{
        {StatusCommand::Available, QT_TRANSLATE_NOOP("StatusRules", "Available"), "", "Online",
         "mRosterSAvailable"},
        {StatusCommand::Away, QT_TRANSLATE_NOOP("StatusRules", "Away"), "away", "Away", "mRosterSAway"},
        {StatusCommand::XAway, QT_TRANSLATE_NOOP("StatusRules", "Extended away"), "xa", "xAway",
         "mRosterSXAway"},
        {StatusCommand::DND, QT_TRANSLATE_NOOP("StatusRules", "Do not disturb"), "dnd", "dnd", "mRosterSDND"},
        {StatusCommand::FFC, QT_TRANSLATE_NOOP("StatusRules", "Free for Chat"), "chat", "free4chat",
         "mRosterSFFC"},
    }};
    return rules;
}

const StatusRule& of(StatusCommand command)
{
    return all()[static_cast<std::size_t>(command)];
}

QString label(StatusCommand command)
{
    return QCoreApplication::translate("StatusRules", of(command).label);
}

QString StatusImageKey(const QString& show)
{
    // Made once, so that ten thousand contacts share one text.
    static const QHash<QString, QString> keys = [] {
        QHash<QString, QString> made;
        for (const auto& rule : all())
            made.insert(QString::fromLatin1(rule.show), QString::fromLatin1(rule.imageKey));
        return made;
    }();
    return keys.value(show);
}

QString FindStatusImg(const CRoster& roster, const QString& JID)
{
    const auto* item = roster.record(JID);
    const QString key = item ? StatusImageKey(item->Status) : QString();
    return key.isEmpty() ? QStringLiteral("Offline") : key;
}

QString text(StatusCommand command, const Client& client, bool automatic)
{
    const auto& settings = client.settings;
    switch (command) {
    case StatusCommand::Available:
        return settings.StatusAv;
    case StatusCommand::Away:
        return automatic ? settings.AutoAwayTimerMsg : settings.StatusAway;
    case StatusCommand::XAway:
        return automatic ? settings.AutoXAwayTimerMsg : settings.StatusXAway;
    case StatusCommand::DND:
        return settings.StatusDND;
    case StatusCommand::FFC:
        return client.FreeForChatMsg;
    }
    return {};
}

QString presence(StatusCommand command, const Client& client, bool automatic)
{
    return stanzas::presence(QString::fromLatin1(of(command).show), text(command, client, automatic));
}

} // namespace statusrules
