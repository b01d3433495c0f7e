#pragma once

#include <QList>
#include <QString>

class CAgents;
class QTreeWidgetItem;

// The nodes of the gateways in the preferences' tree: their key and text is the gateway's JID.
namespace gatewaynodes
{

// Whether this is the node of a gateway, not that of a category.
bool isGateway(const QTreeWidgetItem& node);
// Adds the gateways of `agents` that have no node yet below `parent`. Those that went are taken out of the
// tree, and belong to the caller.
QList<QTreeWidgetItem*> reload(QTreeWidgetItem& parent, const CAgents& agents);

} // namespace gatewaynodes
