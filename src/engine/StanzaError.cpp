#include "engine/StanzaError.h"

#include "engine/Xml.h"

#include <array>
#include <string_view>

namespace
{

constexpr std::string_view stanzaErrors = "urn:ietf:params:xml:ns:xmpp-stanzas";

struct Condition {
    std::string_view name;
    int code;
};

constexpr std::array conditions{
    Condition{"bad-request", 400},
    Condition{"conflict", 409},
    Condition{"feature-not-implemented", 501},
    Condition{"forbidden", 403},
    Condition{"gone", 302},
    Condition{"internal-server-error", 500},
    Condition{"item-not-found", 404},
    Condition{"jid-malformed", 400},
    Condition{"not-acceptable", 406},
    Condition{"not-allowed", 405},
    Condition{"not-authorized", 401},
    Condition{"payment-required", 402},
    Condition{"policy-violation", 406},
    Condition{"recipient-unavailable", 404},
    Condition{"redirect", 302},
    Condition{"registration-required", 407},
    Condition{"remote-server-not-found", 502},
    Condition{"remote-server-timeout", 504},
    Condition{"resource-constraint", 500},
    Condition{"service-unavailable", 503},
    Condition{"subscription-required", 407},
    Condition{"undefined-condition", 500},
    Condition{"unexpected-request", 400},
};

int codeOf(std::string_view condition)
{
    for (const auto& known : conditions) {
        if (known.name == condition)
            return known.code;
    }
    return 0;
}

} // namespace

StanzaError StanzaError::of(pugi::xml_node stanza)
{
    const auto node = stanza.child("error");
    StanzaError error;
    int byCondition = 0;
    for (const auto child : node.children()) {
        if (child.type() != pugi::node_element)
            error.serverText += QString::fromUtf8(child.value());
        else if (xml::xmlns(child) != stanzaErrors)
            continue;
        else if (std::string_view(child.name()) == "text")
            error.serverText += xml::text(child);
        else
            byCondition = codeOf(child.name());
    }
    error.serverText = error.serverText.trimmed();
    const int byNumber = node.attribute("code").as_int();
    error.code = byNumber > 0 ? byNumber : byCondition > 0 ? byCondition : 500;
    return error;
}

QString StanzaError::sentence() const
{
    constexpr qsizetype longest = 1000; // of what anybody may have written
    if (!serverText.isEmpty())
        return serverText.left(longest);
    switch (code) {
    case 401:
        return tr("The user name or the password is not right.");
    case 403:
    case 405:
        return tr("The server does not allow this.");
    case 404:
        return tr("There is no such address.");
    case 406:
        return tr("The server did not accept the data.");
    case 407:
        return tr("This needs a registration first.");
    case 409:
        return tr("This name is taken already.");
    case 501:
    case 503:
        return tr("The server does not offer this service.");
    case 502:
        return tr("The other server cannot be found.");
    case 504:
        return tr("The other server did not answer in time.");
    default:
        return tr("The server answered with error %1.").arg(code);
    }
}
