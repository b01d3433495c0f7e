#include "engine/bridge/StanzaText.h"
#include "engine/bridge/queries/IqReply.h"
#include "engine/bridge/queries/Queries.h"

#include <QHash>
#include <QSet>
#include <QStringList>

namespace
{

constexpr const char* rosterNamespace = "jabber:iq:roster";

pugi::xml_node query(pugi::xml_node iq)
{
    return stanza::child(iq, rosterNamespace);
}

// The same for however the address is spelled.
QString keyOf(pugi::xml_node item)
{
    return jid::bare(xml::attribute(item, "jid")).toLower();
}

QStringList groupsOf(pugi::xml_node item)
{
    QStringList groups;
    for (const auto group : item.children("group")) {
        const auto name = xml::text(group).trimmed();
        if (!name.isEmpty() && !groups.contains(name))
            groups << name;
    }
    return groups;
}

void setGroups(pugi::xml_node item, const QStringList& groups)
{
    while (item.remove_child("group")) {
    }
    for (const auto& group : groups)
        item.append_child("group").text().set(group.toUtf8().constData());
}

bool isRemoval(pugi::xml_node item)
{
    return stanza::hasValue(item, "subscription", "remove");
}

bool hasSeveralGroups(pugi::xml_node item)
{
    const auto first = item.child("group");
    return first && first.next_sibling("group");
}

// Two groups would be read as one name, and a removal that still speaks of a request as no removal.
bool isMisread(pugi::xml_node item)
{
    return hasSeveralGroups(item) || (isRemoval(item) && item.attribute("ask"));
}

void makeReadable(pugi::xml_node item)
{
    setGroups(item, groupsOf(item).mid(0, 1));
    if (isRemoval(item))
        item.remove_attribute("ask");
}

// The contact list (RFC 6121, 2). The client knows one group of a contact: the first of several is shown, and
// the others go along with whatever the client sets. Pushes are acknowledged here; the client, which never
// answers one, still gets them. A change that the server refuses is followed by what the server has.
class Roster : public Translator
{
public:
    void begin(BridgeContext&) override
    {
        groups_.clear();
        listed_.clear();
    }
    bool down(const ClientStanza& stanza, BridgeContext& context) override;
    bool up(std::shared_ptr<Stanza>& stanza, BridgeContext& context) override;

private:
    QByteArray withAllGroups(const ClientStanza& stanza, bool takesEmpty) const;
    QStringList groupsFor(pugi::xml_node item) const;
    std::shared_ptr<Stanza> learnt(const std::shared_ptr<Stanza>& list, BridgeContext& context);
    void refused(pugi::xml_node error, const ClientStanza& request, BridgeContext& context);
    void tellState(const QString& address, const Exchange::Answer& answer, BridgeContext& context);

    // Of those contacts that have several.
    QHash<QString, QStringList> groups_;
    // Whom the client has in its list.
    QSet<QString> listed_;
};

bool Roster::down(const ClientStanza& stanza, BridgeContext& context)
{
    const auto iq = stanza.root();
    if (!context.home.key(xml::attribute(iq, "to")).isEmpty())
        return false;
    const bool isOld = context.knowledge.at(context.home.server()).kind == Knowledge::Kind::Old;
    const auto text = stanza::isType(iq, "set") ? withAllGroups(stanza, isOld) : stanza.text;
    const auto answered = [this, stanza, &context](const Exchange::Answer& answer) {
        if (!answer.isResult())
            return refused(answer.stanza->root(), stanza, context);
        if (stanza::isType(stanza.root(), "get"))
            context.audience.forgetContacts();
        context.out.up << learnt(answer.stanza, context);
    };
    context.exchange.forward(text, iq, answered, std::nullopt);
    return true;
}

// An empty group says the same as none, and a server of today may refuse it.
QByteArray Roster::withAllGroups(const ClientStanza& stanza, bool takesEmpty) const
{
    const auto differs = [&](pugi::xml_node item) {
        const auto group = item.child("group");
        const bool isEmpty = group && xml::text(group).isEmpty() && !takesEmpty;
        return isEmpty || (groups_.contains(keyOf(item)) && !isRemoval(item));
    };
    if (!query(stanza.root()).find_child(differs))
        return stanza.text;
    return stanza::changedText(stanza.root(), [&](pugi::xml_node copy) {
        for (auto item : query(copy).children("item")) {
            if (differs(item))
                setGroups(item, groupsFor(item));
        }
    });
}

// The shown group gives way to the one that is set; an item that speaks of no group changes none.
QStringList Roster::groupsFor(pugi::xml_node item) const
{
    auto groups = groupsOf(item);
    if (isRemoval(item))
        return groups;
    const auto known = groups_.value(keyOf(item));
    for (const auto& group : item.child("group") ? known.mid(1) : known) {
        if (!groups.contains(group))
            groups << group;
    }
    return groups;
}

bool Roster::up(std::shared_ptr<Stanza>& stanza, BridgeContext& context)
{
    const auto iq = stanza->root();
    if (!stanza::isType(iq, "set"))
        return false;
    if (iq.attribute("id"))
        context.out.wire << reply::result(iq);
    stanza = learnt(stanza, context);
    return false;
}

std::shared_ptr<Stanza> Roster::learnt(const std::shared_ptr<Stanza>& list, BridgeContext& context)
{
    for (const auto item : query(list->root()).children("item")) {
        const auto key = keyOf(item);
        context.audience.contact(item, key);
        const auto groups = hasSeveralGroups(item) ? groupsOf(item) : QStringList();
        if (groups.size() > 1)
            groups_.insert(key, groups);
        else if (!groups_.isEmpty())
            groups_.remove(key);
        if (isRemoval(item))
            listed_.remove(key);
        else
            listed_.insert(key);
    }
    if (!query(list->root()).find_child(isMisread))
        return list;
    return stanza::changed(list->root(), [](pugi::xml_node copy) {
        for (auto item : query(copy).children("item")) {
            if (isMisread(item))
                makeReadable(item);
        }
    });
}

// The client takes every item for the server's word, so the echo of its own request must not reach it.
void Roster::refused(pugi::xml_node error, const ClientStanza& request, BridgeContext& context)
{
    context.out.up << stanza::changed(error, [](pugi::xml_node copy) { copy.remove_child(query(copy)); });
    if (!stanza::isType(request.root(), "set"))
        return;
    for (const auto item : query(request.root()).children("item")) {
        const auto address = xml::attribute(item, "jid");
        context.exchange.ask({.to = {}, .payload = QStringLiteral("<query xmlns=\"jabber:iq:roster\"/>")},
                             [this, address, &context](const Exchange::Answer& answer) {
                                 tellState(address, answer, context);
                             });
    }
}

void Roster::tellState(const QString& address, const Exchange::Answer& answer, BridgeContext& context)
{
    if (!answer.isResult())
        return;
    auto push = Stanza::fromXml(QStringLiteral("<iq type=\"set\" id=\"brelo-state\"><query "
                                               "xmlns=\"jabber:iq:roster\"><item jid=\"%1\" "
                                               "subscription=\"remove\"/></query></iq>")
                                    .arg(xml::escaped(address)));
    const auto key = keyOf(query(push->root()).first_child());
    const auto isThis = [&key](pugi::xml_node item) { return keyOf(item) == key; };
    if (const auto item = query(answer.stanza->root()).find_child(isThis))
        push = stanza::changed(push->root(), [item](pugi::xml_node copy) {
            query(copy).remove_children();
            query(copy).append_copy(item);
        });
    else if (!listed_.contains(key))
        return; // the client would enter whom it is told to remove
    context.out.up << learnt(push, context);
}

} // namespace

std::shared_ptr<Translator> queries::roster()
{
    return std::make_shared<Roster>();
}
