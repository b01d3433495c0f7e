#include "contacts/ListFixture.h"

#include "contacts/FixedGroups.h"

namespace
{

QString look(const TreeNode& node)
{
    QString text = node.text + " [" + node.image + "]";
    if (node.bold)
        text += " bold";
    if (node.colour != 0)
        text += " #" + QString::number(node.colour, 16);
    return text;
}

void draw(const TreeNode& node, const QString& level, QString& out)
{
    out += level + look(node) + "\n";
    for (const TreeNode* child : node.children)
        draw(*child, level + "  ", out);
}

} // namespace

ListFixture::ListFixture()
{
    client.desktop = outside.desktop();
    drawing.InitRoster();
    drawing.settle();
}

void ListFixture::push(const QString& items)
{
    sync.OnIQ(engine.contextFor("<iq type='set' id='push'><query xmlns='jabber:iq:roster'>" + items +
                                "</query></iq>"));
}

void ListFixture::presence(const QString& from, const QString& type, const QString& rest)
{
    const QString attribute = type.isEmpty() ? QString() : " type='" + type + "'";
    tracker.OnPresence(
        engine.contextFor("<presence from='" + from + "'" + attribute + ">" + rest + "</presence>"));
}

void ListFixture::addContact(const QString& JID, const QString& nick, const QString& group)
{
    push(QString("<item jid='%1' name='%2' subscription='both'><group>%3</group></item>")
             .arg(JID, nick, group));
}

void ListFixture::addTransport(const QString& JID, const QString& name)
{
    client.MyAgents.AddItem(JID, name, false, false)->IsTransport = true;
    client.MyRoster.AddItem(JID, name, false, "4", {}, true, {}, {}, {}, {});
    sync.AddItem(JID, name, groups::gateways(), true, false, {}, {});
}

QString ListFixture::drawn()
{
    auto& tree = drawing.tree();
    QString out;
    for (int row = 0; row < tree.rowCount(); ++row)
        draw(*ContactTree::node(tree.index(row, 0)), QString(), out);
    return out;
}

QString ListFixture::node(const QString& key)
{
    const TreeNode* found = find(key);
    return found ? look(*found) : QStringLiteral("none");
}

TreeNode* ListFixture::find(const QString& key)
{
    auto& tree = drawing.tree();
    return tree.Item(tree.NodeIndexOfKey(key));
}
