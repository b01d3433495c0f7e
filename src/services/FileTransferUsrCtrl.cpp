#include "services/FileTransferUsrCtrl.h"

#include "contacts/Client.h"
#include "contacts/RosterStanzas.h"
#include "desktop/SafeLink.h"
#include "engine/Jid.h"
#include "engine/Xml.h"
#include "messaging/LongLines.h"

#include <QUrl>

namespace
{

constexpr qsizetype mostInvited = 20;
constexpr qsizetype longestCaller = 200; // characters, so that the link below keeps its room
constexpr qsizetype longestRefused = 500;
constexpr qsizetype longestLine = 80; // a box cuts what can't be wrapped
constexpr qint64 contactPause = 10;   // seconds after an answer in which no further question comes
constexpr qint64 strangerPause = 60;

// The two blanks stand on the wire.
QString invitation(const QString& target, const QString& address)
{
    return QStringLiteral("<iq type=\"set\"  to=\"%1\" ><query xmlns=\"jabber:iq:oob\">"
                          "<url>callto:%2+type=ip</url></query></iq>")
        .arg(xml::escaped(target), xml::escaped(address));
}

QString linkOf(const Stanza& offer)
{
    return xml::text(offer.root().select_node(".//*[local-name()='url']").node()).trimmed();
}

QString cut(const QString& text, qsizetype most)
{
    const auto length = longlines::shownLength(text, most);
    return length == text.size() ? text : text.left(length) + QStringLiteral("...");
}

// A link that can be opened is shown as the desktop gets it: no letter in it looks like another, none turns
// its direction, and the host can't be pushed out of sight.
QString shown(const QString& link)
{
    QString text = isSafeLink(link) ? QString::fromLatin1(QUrl(link, QUrl::StrictMode).toEncoded())
                                    : cut(link.simplified(), longestRefused);
    for (auto at = longestLine; at < text.size(); at += longestLine + 1)
        text.insert(at, u'\n');
    return text;
}

// The key under which a caller's answers are remembered.
QString callerKey(const Client& client, const QString& from)
{
    const QString bare = jid::bare(from).toLower();
    return client.MyRoster.DoesJIDExist(bare) ? bare : QString();
}

} // namespace

QString FileTransferUsrCtrl::invite(const QString& target)
{
    const auto own = client_.desktop.network->ownAddress();
    const SameSession same(client_);
    if (!own.fault.isEmpty())
        client_.desktop.boxes->critical(tr("BreloIM - NetMeeting Call"), own.fault);
    if (!same || !stanzas::send(client_, invitation(target, own.text)))
        return tr("The invitation to the call was not sent.");
    invited_ += target.toLower(); // a server spells addresses in its own way
    if (invited_.size() > mostInvited)
        invited_.removeFirst();
    return tr("%1 was invited to call you.").arg(target);
}

void FileTransferUsrCtrl::OnIQ(PlugInContext& context)
{
    const auto fields = context.Stanza().IqFields();
    const QString type = fields.Type();
    if (type == u"error" && invited_.removeOne(fields.From().toLower()))
        client_.desktop.boxes->exclamation(tr("BreloIM - Error"), tr("Impossible to contact your friend !"));
    else if (type == u"set" && mayAsk(fields.From()))
        ask(context);
}

bool FileTransferUsrCtrl::mayAsk(const QString& from) const
{
    const QString caller = callerKey(client_, from);
    if (caller.isEmpty() && !client_.settings.AcceptMessageFromAll)
        return false;
    const auto answered = answered_.value(caller);
    return !answered.isValid() ||
           answered.secsTo(client_.desktop.clock->now()) >= (caller.isEmpty() ? strangerPause : contactPause);
}

// What would be opened stands below the question: a link of another hides where it leads.
void FileTransferUsrCtrl::ask(PlugInContext& context)
{
    const QString from = context.Stanza().IqFields().From();
    const QString link = linkOf(context.Stanza());
    const SameSession same(client_);
    const auto answer = client_.desktop.boxes->show(
        tr("BreloIM - NetMeeting Call"),
        cut(from, longestCaller) +
            tr(" is trying to connect to you using NetMeeting, do you want to accept the Call?") +
            QStringLiteral("\n\n") + shown(link),
        MessageBoxes::Icon::Exclamation, MessageBoxes::Buttons::YesNo);
    if (!same)
        return;
    answered_[callerKey(client_, from)] = client_.desktop.clock->now();
    if (answer == MessageBoxes::Answer::Yes)
        open(from, link, context);
    else
        deny(from, context);
}

void FileTransferUsrCtrl::open(const QString& from, const QString& link, PlugInContext& context)
{
    if (isSafeLink(link) && client_.desktop.links->open(link))
        return;
    deny(from, context);
    client_.desktop.boxes->exclamation(
        tr("BreloIM - Error"), isSafeLink(link)
                                   ? tr("No program was found that opens this call:\n\n%1").arg(shown(link))
                                   : tr("This call is not safe to open, and was refused:\n\n%1")
                                         .arg(link.isEmpty() ? tr("(no address)") : shown(link)));
}

void FileTransferUsrCtrl::deny(const QString& from, PlugInContext& context)
{
    auto& packet = context.OutPacket();
    packet.Clear();
    auto fields = packet.MessageFields();
    fields.setTo(from);
    fields.setBody(tr("Automatic Message: NetMeeting Call denied"));
    packet.Send();
}
