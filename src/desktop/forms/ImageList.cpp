#include "desktop/forms/ImageList.h"

#include "desktop/forms/SvgIconEngine.h"

#include <QCoreApplication>
#include <QHash>

#include <iterator>

namespace
{

struct Picture {
    QLatin1String key;
    QLatin1String
        file; // below :/icons, without its ending; keys that differ only in case need names of their own
};

constexpr Picture picture(const char* key, const char* file)
{
    return {QLatin1String(key), QLatin1String(file)};
}

constexpr Picture pictures[] = {
    // Taken by position: the order of these is a contract.
    picture("LightOn", "light-on"),
    picture("Away", "away"),
    picture("dnd", "dnd"),
    picture("Offline", "offline"),
    picture("LightOff", "light-off"),
    picture("Online", "online"),
    picture("Add", "add"),
    picture("Del", "delete"),
    picture("Pendingauth", "pending-auth"),
    picture("xAway", "extended-away"),
    picture("ClosedFolder3", "folder-star-closed"),
    picture("OpenFolder3", "folder-star-open"),
    picture("OpenFolder", "folder-open"),
    picture("CloseFolder", "folder-closed"),
    picture("Mail", "mail"),
    picture("ClosedFolder2", "folder-group-closed"),
    picture("OpenFolder2", "folder-group-open"),
    picture("online", "person-online"),
    picture("groupchat", "groupchat"),
    picture("Refresh", "refresh"),
    picture("Pending", "pending"),
    picture("server", "server"),
    picture("free4chat", "free-for-chat"),
    picture("notauth", "not-authorized"),
    picture("invite", "invite"),
    picture("chatroom", "chatroom"),
    picture("Service", "service"),
    picture("ServerOFF", "server-off"),
    picture("ServerON", "server-on"),
    // Taken by key only.
    picture("block", "block"),
    picture("historyG", "history"),
    picture("voice", "voice"),
    picture("rsvp", "rsvp"),
    picture("disenret", "carriage-return"),
    picture("vcard", "vcard"),
    picture("Find", "find"),
    picture("browser", "browser"),
    picture("mailwatch", "mail-watch"),
    picture("newmail", "mail-new"),
    picture("about", "about"),
    picture("preferences", "preferences"),
    picture("exit", "exit"),
    picture("chat", "chat"),
    picture("rename", "rename"),
    picture("move", "move"),
    picture("newgroup", "folder-new"),
    picture("showonline", "show-online"),
    picture("ssl", "ssl"),
    picture("open", "open-connection"),
    picture("breloim", "breloim"),
};

using Icons = QHash<QString, QIcon>;

Icons& icons()
{
    static Icons all = [] {
        // Pixmaps may not outlive the application object.
        qAddPostRoutine([] { icons().clear(); });
        return Icons();
    }();
    return all;
}

// The icons are made all at once and cost next to nothing: the drawing is read when a picture is first
// painted.
Icons& loadedIcons()
{
    Icons& all = icons();
    if (all.isEmpty()) {
        all.reserve(std::size(pictures));
        for (const auto& [key, file] : pictures)
            all.insert(key, QIcon(new SvgIconEngine(QStringLiteral(":/icons/%1.svg").arg(file))));
    }
    return all;
}

} // namespace

QIcon ImageList::icon(const QString& key)
{
    return loadedIcons().value(key);
}

QString ImageList::keyAt(int position)
{
    return position >= 1 && position <= count() ? QString(pictures[position - 1].key) : QString();
}

int ImageList::count()
{
    return int(std::size(pictures));
}
