#include "settings/SettingKeys.h"

#include "settings/Paths.h"
#include "settings/SiteData.h"

#include <QLocale>

namespace
{

constexpr auto program = "Program Settings";
constexpr auto status = "Status Messages";

// Names of places in the columns; they are filled in when a value is needed.
constexpr auto defaultServer = "%server%";
constexpr auto applicationFolder = "%application%";

using S = Settings;
using enum SettingKey::Use;

// section, key, member, missing, reset (null leaves alone), use, written spelling
constexpr SettingKey table[] = {
    {program, "Check Hotmail", &S::CheckHotmail, "False", "False"},
    {program, "Check Yahoo! Mail", &S::CheckYahooMail, "False", "False"},
    {program, "Check Error", &S::CheckError, "False", "True"},
    {program, "Check Gateways", &S::CheckGateways, "False", "True"},
    {program, "Start in System Tray", &S::StartInSystemTray, "False", "False"},
    {program, "Sound on new Message", &S::SoundOnNewMessage, "False", "True"},
    {program, "Sound on new Message File", &S::SoundOnNewMessageFile, "\\Sounds\\message1.wav",
     "%application%\\Sounds\\message1.wav"},
    {program, "Sound on On Line", &S::SoundOnOnLine, "False", "True"},
    {program, "Sound on On Line File", &S::SoundOnOnLineFile, "\\Sounds\\online.wav",
     "%application%\\Sounds\\online.wav"},
    {program, "Sound on Off Line", &S::SoundOnOffLine, "False", nullptr},
    {program, "Sound on Off Line File", &S::SoundOnOffLineFile, "", nullptr},
    {program, "Current Window on Top", &S::CurrentWindowOnTop, "True", "True"},
    {"program Settings", "New Window on Top", &S::NewWindowOnTop, "False", "False", Both, program},
    {program, "Auto Logon", &S::AutoLogon, "False", "False"},
    {program, "Server", &S::Server, defaultServer, defaultServer},
    {program, "UserName", &S::UserName, "", nullptr},
    {program, "Resource", &S::Resource, "BreloIM", "BreloIM"},
    {program, "Priority", &S::Priority, "1", "0"},
    {program, "SavePassword", &S::SavePassword, "False", nullptr},
    {program, "Password", &S::Password, "", nullptr, Secret},
    {program, "SSL", &S::SSL, "False", "False"},
    // Kept: this key shares the variable of "Resource" and is read after it, so it is the one that counts.
    {program, "Session", &S::Resource, "BreloIM", nullptr},
    {program, "Begin at Startup", &S::BeginAtStartup, "True", "True"},
    {program, "Auto Reconnect", &S::AutoReconnect, "True", "False"},
    {program, "On Top", &S::OnTop, "False", nullptr},
    {status, "Av", &S::StatusAv, "", nullptr},
    {status, "Away", &S::StatusAway, "Al momento non al computer", nullptr},
    {status, "xAway", &S::StatusXAway, "Non al computer per un po'", nullptr},
    {status, "DND", &S::StatusDND, "I'm busy, go away.", nullptr},
    {program, "Auto Away Timer", &S::AutoAwayTimer, "False", "True"},
    {program, "Auto Away Timer Mins", &S::AutoAwayTimerMins, "5", "5"},
    {program, "Auto Away Timer Msg", &S::AutoAwayTimerMsg, "Al momento non al computer",
     "Al momento non al computer"},
    {program, "Auto xAway Timer", &S::AutoXAwayTimer, "False", "True"},
    {program, "Auto xAway Timer Mins", &S::AutoXAwayTimerMins, "8", "8"},
    {program, "Auto xAway Timer Msg", &S::AutoXAwayTimerMsg, "Al momento non al computer",
     "Al momento non al computer per un po'"},
    {program, "Version", {}, BRELO_VERSION, nullptr, WriteOnly},
    {program, "Auth Ask For ALL", &S::AuthAskForAll, "True", "True"},
    {program, "Auth for ALL", &S::AuthForAll, "False", "False"},
    {program, "Auth Deny ALL", &S::AuthDenyAll, "False", "False"},
    {program, "Accept Message From All", &S::AcceptMessageFromAll, "True", "True"},
    {program, "Do not receive Mess From UnAuth", &S::DoNotReceiveMessFromUnAuth, "False", "False"},
    {program, "Auto Replay to UnAuth", &S::AutoReplayToUnAuth, "False", "False"},
    {program, "Auto Replay Mess", &S::AutoReplayMess, "", ""},
    {program, "Balloon Time", &S::BalloonTime, "10000", "10000"},
    {program, "Balloon Enable", &S::BalloonEnable, "True", "True"},
    {program, "Color Online", &S::ColorOnline, "12222037", "12222037"}, // 0xBA7E55
    {program, "Color Offline", &S::ColorOffline, "0", "0"},
    {program, "Char OnLine Bold", &S::CharOnLineBold, "True", "True"},
    {program, "Char OnLine Size", &S::CharOnLineSize, "8.25", "8"},
    {program, "Char OnLine Italic", &S::CharOnLineItalic, "False", "False"},
    {program, "Char OnLine Name", &S::CharOnLineName, "Verdana", "Verdana"},
    // Kept: the misspelt key is the one that is read.
    {program, "Char OnffLine Bold", &S::CharOnffLineBold, "False", "False", ReadOnly},
    {program, "Char OffLine Size", &S::CharOffLineSize, "8.25", "8", ReadOnly},
    {program, "Char OffLine Name", &S::CharOffLineName, "Verdana", "Verdana", ReadOnly},
    {program, "Show Online users", &S::ShowOnlineUsers, "False", nullptr},
    {program, "Add Sponsors", &S::AddSponsors, "True", nullptr},
    {program, "Sponsor Added", &S::SponsorAdded, "False", nullptr, Both, program, "Sponsor added"},
    {program, "DialUp", &S::DialUp, "False", "True"},
    {program, "Force DialUp", &S::ForceDialUp, "True", "True"},
    {program, "NoBanList", &S::NoBanList, "True", nullptr},
    {program, "User Mode", &S::UserMode, "False", "False"},
};

// Each `parse` sets the value and is true, or leaves it and is false.
bool parse(const QString& text, int& value)
{
    bool readable = false;
    const int number = QLocale::c().toInt(text.trimmed(), &readable);
    if (readable)
        value = number;
    return readable;
}

// A number counts as a Boolean too: all but 0 are true.
bool parse(const QString& text, bool& value)
{
    const QString word = text.trimmed();
    int number = 0;
    if (word.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0)
        number = 1;
    else if (word.compare(QLatin1String("False"), Qt::CaseInsensitive) != 0 && !parse(word, number))
        return false;
    value = number != 0;
    return true;
}

bool parse(const QString& text, double& value)
{
    bool readable = false;
    const double number = QLocale::c().toDouble(text.trimmed(), &readable);
    readable = readable && qIsFinite(number);
    if (readable)
        value = number;
    return readable;
}

bool parse(const QString& text, QString& value)
{
    value = text;
    return true;
}

QString format(bool value)
{
    return value ? QStringLiteral("True") : QStringLiteral("False");
}
QString format(int value)
{
    return QString::number(value);
}
QString format(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}
QString format(const QString& value)
{
    return value;
}

} // namespace

QString SettingKey::filled(const char* text, const SiteData& site)
{
    const auto column = QString::fromUtf8(text);
    if (column == QLatin1String(defaultServer))
        return site.DefaultServer;
    const QLatin1String folder(applicationFolder);
    return column.startsWith(folder) ? paths::applicationFile(column.mid(folder.size())) : column;
}

bool SettingKey::put(Settings& settings, const QString& text) const
{
    return std::visit(
        [&](auto pointer) {
            if constexpr (std::is_same_v<decltype(pointer), std::monostate>)
                return true;
            else
                return parse(text, settings.*pointer);
        },
        member);
}

QString SettingKey::text(const Settings& settings) const
{
    return std::visit(
        [&](auto pointer) {
            if constexpr (std::is_same_v<decltype(pointer), std::monostate>)
                return QString::fromUtf8(missing);
            else
                return format(settings.*pointer);
        },
        member);
}

std::span<const SettingKey> settingKeys()
{
    return table;
}
