#include "engine/bridge/ErrorsPart.h"

#include "engine/StanzaError.h"
#include "engine/bridge/StanzaText.h"

bool ErrorsPart::up(std::shared_ptr<Stanza>& stanza, BridgeState&, BridgeOutput&)
{
    const auto root = stanza->root();
    const auto error = root.child("error");
    if (!error || !stanza::isType(root, "error"))
        return false;
    const auto meaning = StanzaError::of(root);
    const bool lacksText = xml::text(error).trimmed().isEmpty();
    if (error.attribute("code") && !lacksText)
        return false;
    stanza = stanza::changed(root, [&](pugi::xml_node copy) {
        auto node = copy.child("error");
        stanza::setAttribute(node, "code", QString::number(meaning.code));
        if (lacksText)
            node.append_child(pugi::node_pcdata).set_value(meaning.sentence().toUtf8().constData());
    });
    return false;
}
