#include "engine/StanzaError.h"
#include "engine/bridge/StanzaText.h"
#include "engine/bridge/queries/Queries.h"

namespace
{

bool isEcho(pugi::xml_node child)
{
    return child.type() == pugi::node_element && std::string_view(child.name()) != "error" &&
           child.first_child();
}

// Errors. The client reads a code (XEP-0086) and the text of <error/>; servers of today send a condition,
// often without a word. A request that an iq's error repeats isn't news of anything: of its element only the
// name stays, by which the client knows who waits.
class Errors : public Translator
{
public:
    bool up(std::shared_ptr<Stanza>& stanza, BridgeContext&) override
    {
        const auto root = stanza->root();
        const auto error = root.child("error");
        const bool lacksText = xml::text(error).trimmed().isEmpty();
        const bool isWhole = !error || (error.attribute("code") && !lacksText);
        const bool repeats = stanza::is(root, "iq") && root.find_child(isEcho);
        if (isWhole && !repeats)
            return false;
        const auto meaning = StanzaError::of(root);
        stanza = stanza::changed(root, [&](pugi::xml_node copy) {
            while (repeats && copy.find_child(isEcho))
                copy.find_child(isEcho).remove_children();
            if (isWhole)
                return;
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
