#include "preferences/PreferenceTree.h"

namespace preferences
{
namespace
{

QString personalEnd()
{
    return QStringLiteral("PersonalN");
}

PreferenceNode node(const char* key, const char* parent, const char* panel)
{
    const QString group = QStringLiteral("Personal");
    const QString name = QString::fromLatin1(key);
    const QString above = QString::fromLatin1(parent);
    return {name, above, QString::fromLatin1(panel), name == group || above == group};
}

} // namespace

const std::vector<PreferenceNode>& categories()
{
    static const std::vector<PreferenceNode> nodes = {
        node("Gateways", "", "GatewayDescription"),
        node("Personal", "", "PersonalUsrCtrl"),
        node("Connection", "Personal", "ConnectionUsrCtrl"),
        node("Messages", "Personal", "MessagesUsrCtrl"),
        node("Privacy", "Personal", "PrivacyUsrCtrl"),
        node("List", "Personal", "RosterPrefUsrCtrl"),
        node("Sounds", "Personal", "SoundUsrCtrl"),
        node("Status", "Personal", "StatusMessagesUsrCtrl"),
        node("Resource", "Personal", "ResourceUsrCtrl"),
        node("Authorizations", "Personal", "AuthorizationUsrCtrl"),
        node("File Sharing", "Personal", "FileSharingUsrCtrl"),
        node("File Transfer", "Personal", "FileTransferUsrCtrl"),
        node("Security", "", "SecurityUsrCtrl"),
        node("Services", "", "ServicesUsrCtrl"),
    };
    return nodes;
}

QString panelName(int number, bool personal)
{
    return QString::number(number) + (personal ? personalEnd() : QStringLiteral("GatewayN"));
}

bool isPersonal(const QString& panelName)
{
    return panelName.endsWith(personalEnd());
}

} // namespace preferences
