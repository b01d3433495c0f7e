#include "groupchat/forms/GroupChatWindow.h"

#include "contacts/Client.h"
#include "engine/Jid.h"
#include "engine/StanzaError.h"
#include "engine/Xml.h"
#include "groupchat/RoomLines.h"
#include "groupchat/RoomStanzas.h"
#include "groupchat/RoomStatus.h"
#include "groupchat/forms/GroupchatWindowForm.h"
#include "messaging/forms/ChatWindow.h"

#include <QPointer>

#include <string>
#include <string_view>
#include <utility>

namespace
{

const QString bagKey = QStringLiteral("IsGroupchat");

GroupchatWindowForm* roomIn(const PlugInContext& context)
{
    return qobject_cast<GroupchatWindowForm*>(context.Session().Properties().Item(bagKey));
}

pugi::xpath_node_set elements(const Stanza& stanza, std::string_view name)
{
    return stanza.root().select_nodes((".//*[local-name()='" + std::string(name) + "']").c_str());
}

// The text of the first element of this name.
QString textOf(const Stanza& stanza, std::string_view name)
{
    return xml::text(elements(stanza, name).first().node());
}

} // namespace

GroupChatWindow::GroupChatWindow(FormRegistry& registry, Client& client, ChatWindow& conversations)
    : registry_(registry), client_(client), conversations_(conversations)
{
}

void GroupChatWindow::OnIQ(PlugInContext& context)
{
    const auto& stanza = context.Stanza();
    if (stanza.XNamespace() == u"jabber:iq:browse" && walkMembers(context) == Walk::Ended)
        return;
    const auto fields = stanza.IqFields();
    if (fields.Type() == u"error")
        onError(context);
    else if (fields.Type() == u"result" && fields.Id() == u"VRX_CONF?")
        onRoom(context);
    else if (fields.Type() == u"result" && fields.Id() == u"VRX_CONF_DATA")
        onOwnEntry(context);
}

// Kept: once an element named the person, a later removal of anybody closes the room, and what follows a
// removal is not looked at.
GroupChatWindow::Walk GroupChatWindow::walkMembers(PlugInContext& context)
{
    auto* room = roomIn(context);
    if (!room || context.Stanza().From() != room->Tag) // no occupant speaks for the room
        return Walk::GoesOn;
    bool isMe = false;
    for (const auto& found : elements(context.Stanza(), "user")) {
        const QString jid = xml::attribute(found.node(), "jid");
        const QString name = xml::attribute(found.node(), "name");
        const bool isOwn = !jid.isEmpty() && jid == room->ownId();
        isMe = isMe || isOwn;
        const int position = room->occupants.NodeIndexByKey(jid);
        if (xml::attribute(found.node(), "type") == u"remove") {
            if (position == 0 && !isOwn) // the own row may have gone with its presence
                continue;
            room->occupants.removeNode(position);
            if (isMe)
                closeRoom(context, *room);
            return Walk::Ended;
        }
        if (jid.isEmpty() || !found.node().attribute("name"))
            continue;
        if (position != 0)
            room->rename(position, name);
        else if (!isOwn)
            room->occupants.add(jid, name);
    }
    return Walk::GoesOn;
}

// The private conversations with occupants stay, to be read. Who didn't leave by himself is told.
void GroupChatWindow::closeRoom(PlugInContext& context, GroupchatWindowForm& room)
{
    if (!room.hasLeftFor(0))
        emit told(tr("You are no longer in %1.").arg(room.windowTitle()));
    client_.GroupchatCloseConfirmed = true;
    room.requestUnload(CloseMode::Code);
    client_.GroupchatCloseConfirmed = false;
    if (context.Session().Properties().isEmpty())
        context.Session().Close();
}

// A room whose window is there is not entered again, only shown.
void GroupChatWindow::onRoom(PlugInContext& context)
{
    giveUpLeaving(context);
    auto* room = roomIn(context);
    if (room && room->isVisible())
        room->bringUp();
    else if (room)
        emit told(tr("You are just leaving %1. Please try again in a moment.").arg(room->Tag));
    else
        enter(context, textOf(context.Stanza(), "name"));
    if (auto* entered = roomIn(context))
        entered->RoomContext = context;
}

// A room that never confirms must not keep the person out for ever.
void GroupChatWindow::giveUpLeaving(const PlugInContext& context)
{
    constexpr int patience = 30'000; // ms
    auto* room = roomIn(context);
    if (room && room->hasLeftFor(patience))
        context.Session().Properties().Remove(bagKey);
}

void GroupChatWindow::enter(PlugInContext& context, const QString& caption)
{
    auto& room = makeRoom(context, caption);
    auto& packet = context.OutPacket();
    packet.Clear();
    packet.PresenceFields().setTo(context.Stanza().IqFields().From());
    packet.PresenceFields().SetAvailable();
    packet.Send();
    SendStanza(context, roomstanzas::nick(room.Tag, nick()));
    room.bringUp();
}

GroupchatWindowForm& GroupChatWindow::makeRoom(const PlugInContext& context, const QString& caption)
{
    auto& room = *new GroupchatWindowForm(registry_, conversations_);
    room.keepIn(context.Session().Properties(), bagKey);
    room.Tag = context.Stanza().From();
    room.peer = room.Tag;
    room.setCaption(caption.isEmpty() ? room.Tag : caption);
    room.tell(tr("Entering the room ..."));
    restore(room, memoryOf(room.Tag));
    connect(&room, &GroupchatWindowForm::leaving, this, [this, &room] {
        auto& memory = memoryOf(room.Tag);
        memory.draft = room.draft();
        if (room.wasShown())
            memory.place = room.place();
    });
    connect(&room, &GroupchatWindowForm::left, &conversations_.unread,
            [this, &room] { conversations_.unread.remove(room.peer); });
    connect(&room, &GroupchatWindowForm::privateChatRequested, this, &GroupChatWindow::privateChatRequested);
    connect(&room, &GroupchatWindowForm::inviteRequested, this, &GroupChatWindow::inviteRequested);
    conversations_.followReading(room);
    return room;
}

GroupChatWindow::Memory& GroupChatWindow::memoryOf(const QString& room)
{
    return memory_[client_.ownBareJid() + u'\n' + room];
}

// What came back stands before what was being typed, to be sent again.
void GroupChatWindow::restore(GroupchatWindowForm& room, Memory& memory)
{
    if (memory.place)
        room.setPlace(*memory.place);
    auto texts = std::exchange(memory.returned, {});
    if (!memory.draft.isEmpty())
        texts += memory.draft;
    room.setDraft(texts.join(u'\n'));
}

void GroupChatWindow::onOwnEntry(const PlugInContext& context)
{
    const QString id = textOf(context.Stanza(), "id");
    if (auto* room = roomIn(context); room && !id.isEmpty())
        room->setOwnEntry(id, textOf(context.Stanza(), "nick"));
}

// The room that isn't there yet is made by entering it; once only, or a room that never comes to be would be
// entered without end. Other refusals are told without a box.
void GroupChatWindow::onError(PlugInContext& context)
{
    const auto& stanza = context.Stanza();
    const QString id = stanza.IqFields().Id();
    if (id != u"VRX_CONF?" && id != u"VRX_CONF_DATA")
        return;
    for (const auto& found : elements(stanza, "error")) {
        const auto first = found.node().first_attribute();
        const std::string_view code = std::string_view(first.name()) == "code" ? first.value() : "";
        if (code == "404" && id == u"VRX_CONF?")
            return enter(context, stanza.IqFields().From());
        if (code == "502")
            return client_.desktop.boxes->critical(
                tr("Attention!"), tr("I am sorry but it was impossible to contact the Chat Room Server ..."));
    }
    const auto error = StanzaError::of(stanza.root());
    if (auto* room = roomIn(context); room && room->isVisible())
        room->refuse(error);
    else
        emit told(tr("%1 can't be entered: %2").arg(stanza.From(), error.sentence()));
}

void GroupChatWindow::OnPresence(PlugInContext& context)
{
    auto* room = roomIn(context);
    const auto presence = context.Stanza().PresenceFields();
    const int position = room ? room->occupants.NodeIndexByKey(presence.From()) : 0;
    if (position == 0)
        return;
    if (presence.IsUnavailable())
        return room->occupants.removeNode(position);
    const auto* status = presence.IsAvailable() ? roomstatus::ofShow(presence.Show()) : nullptr;
    if (!status || room->occupants.node(position)->Image == QLatin1String(status->imageKey))
        return;
    room->occupants.setImage(position, QLatin1String(status->imageKey));
    const auto& occupant = *room->occupants.node(position);
    room->writeStatus(u' ' + roomstatus::sentence(*status, occupant.Text) + u' ');
    if (occupant.Key == room->ownId())
        room->setOwnStatus(status->label);
}

void GroupChatWindow::OnMessage(PlugInContext& context)
{
    auto* room = roomIn(context);
    if (!room)
        return;
    const auto message = context.Stanza().MessageFields();
    const QString sender = room->occupants.NodeTextByKey(message.From());
    if (const QString subject = message.Subject(); !subject.isEmpty())
        room->setSubject(subject);
    const QString body = message.Body();
    if (body.isEmpty())
        return;
    const QString shown = roomlines::displayed(body, sender);
    if (!message.From().contains(u'/'))
        room->writeStatus(u' ' + shown + u' ', message.Written());
    else if (shown != body)
        room->writeAction(shown);
    else
        room->writeMessage(sender, body, message.Written());
    markIfNamed(*room, context.Stanza());
    if (message.Written().isNull()) // what the room tells again stands in the log already
        log(room->Tag, sender, shown);
}

// What was said before the person came is no news, and neither is what a room says that is being left.
void GroupChatWindow::markIfNamed(GroupchatWindowForm& room, const Stanza& stanza)
{
    const auto message = stanza.MessageFields();
    const bool isNews = message.Written().isNull() && message.From() != room.ownId() && room.isVisible();
    if (isNews && roomlines::namesNick(message.Body(), room.ownNick()))
        conversations_.markUnread(room);
}

void GroupChatWindow::log(const QString& room, const QString& nick, const QString& text)
{
    conversations_.reportLog(conversations_.log().WriteLogLine(text, nick, room, true));
}

void GroupChatWindow::OnReturned(PlugInContext& context)
{
    const auto message = context.Stanza().MessageFields();
    const bool uncertain = context.Stanza().kind() == Stanza::Kind::Uncertain;
    const QString address = jid::bare(message.To());
    if (message.Subject().isEmpty())
        memoryOf(address).returned += message.Body(); // the window goes with the connection
    if (auto* room = roomIn(context))
        room->writeReturned(message.Body(), uncertain);
    conversations_.reportLog(conversations_.log().WriteReturned(message.Body(), address, uncertain));
}
