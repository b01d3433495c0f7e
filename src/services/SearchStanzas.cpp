#include "services/SearchStanzas.h"

#include "contacts/RosterStanzas.h"
#include "engine/Xml.h"

namespace searchstanzas
{

QString init(const QString& directory)
{
    return QStringLiteral(
               "<iq to=\"%1\" type=\"get\" id=\"VRX_SEARCH_INIT\"><query xmlns=\"jabber:iq:search\"/></iq>")
        .arg(xml::escaped(directory));
}

QString result(const QString& directory, const QList<Field>& fields)
{
    QString text =
        QStringLiteral("<iq to=\"") + xml::escaped(directory) +
        QStringLiteral("\" type=\"set\" id=\"VRX_SEARCH_RESULT\"><query xmlns=\"jabber:iq:search\">");
    for (const auto& [name, value] : fields) {
        if (!value.isEmpty() && xml::isElementName(name))
            text += u'<' + name + u'>' + xml::escaped(value) + QStringLiteral("</") + name + u'>';
    }
    return text + QStringLiteral("</query></iq>");
}

QString checkServer(const QString& server)
{
    return stanzas::browse(QStringLiteral("Check_Server"), server);
}

} // namespace searchstanzas
