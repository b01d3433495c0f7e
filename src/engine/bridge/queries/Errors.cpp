#include "engine/StanzaError.h"
#include "engine/bridge/StanzaText.h"
#include "engine/bridge/queries/Queries.h"

namespace
{

// Errors. The client reads a code (XEP-0086) and the text of <error/>; servers of today send a condition,
// often without a word.
class Errors : public Translator
{
public:
    bool up(std::shared_ptr<Stanza>& stanza, BridgeContext&) override
    {
        const auto root = stanza->root();
        const auto error = root.child("error");
        const bool lacksText = xml::text(error).trimmed().isEmpty();
        if (!error || (error.attribute("code") && !lacksText))
            return false;
        const auto meaning = StanzaError::of(root);
        stanza = stanza::changed(root, [&](pugi::xml_node copy) {
            auto node = copy.child("error");
            stanza::setAttribute(node, "code", QString::number(meaning.code));
            if (lacksText)
                node.append_child(pugi::node_pcdata).set_value(meaning.sentence().toUtf8().constData());
        });
        return false;
    }
};

} // namespace

std::shared_ptr<Translator> queries::errors()
{
    return std::make_shared<Errors>();
}
