#include "session/ComponentCheck.h"

#include "engine/Xml.h"

QString componentCheck()
{
    const auto document = xml::parsed(QStringLiteral("<iq><query xmlns=\"jabber:iq:roster\"/></iq>"));
    if (document && document->select_node("//iq/query"))
        return {};
    return QStringLiteral("Unable to install an essential component.\n\n"
                          "Check your Internet connection or contact the Administrator,\n"
                          "then try to start the program again");
}
