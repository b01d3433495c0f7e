#include "preferences/forms/GatewayNodes.h"

#include "contacts/Collections.h"

#include <QHash>
#include <QTreeWidgetItem>

namespace
{

constexpr int gatewayType = QTreeWidgetItem::UserType;
constexpr qsizetype longestTip = 200;

// Names come from the server, and a tool tip would take some for markup.
QString tip(const QString& name)
{
    const QString shown = name.left(longestTip);
    return Qt::mightBeRichText(shown) ? shown.toHtmlEscaped() : shown;
}

} // namespace

namespace gatewaynodes
{

bool isGateway(const QTreeWidgetItem& node)
{
    return node.type() == gatewayType;
}

QList<QTreeWidgetItem*> reload(QTreeWidgetItem& parent, const CAgents& agents)
{
    QHash<QString, QTreeWidgetItem*> gone;
    for (int index = 0; index < parent.childCount(); ++index)
        gone.insert(parent.child(index)->text(0).toLower(), parent.child(index));
    QSet<QString> listed;
    QList<QTreeWidgetItem*> added;
    for (int position = 1; position <= agents.Count(); ++position) {
        const auto& agent = *agents.Item(position);
        const QString key = agent.JID.toLower();
        if (!agent.IsTransport || key.isEmpty() || listed.contains(key))
            continue;
        listed.insert(key);
        auto* node = gone.take(key);
        if (!node)
            added += node = new QTreeWidgetItem({agent.JID}, gatewayType);
        node->setToolTip(0, tip(agent.ExtName));
    }
    for (auto* node : std::as_const(gone))
        parent.removeChild(node);
    parent.addChildren(added);
    return gone.values();
}

} // namespace gatewaynodes
