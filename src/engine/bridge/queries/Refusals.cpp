#include "engine/bridge/StanzaText.h"
#include "engine/bridge/queries/Queries.h"

#include <algorithm>
#include <deque>

namespace
{

constexpr std::size_t mostWaiting = 100;

// A server need not repeat the request in its refusal (RFC 6120, 8.3.1); the client knows by the namespace
// who waits. Of the request its element alone is put back.
class Refusals : public Translator
{
public:
    void begin(BridgeContext&) override { waiting_.clear(); }
    bool down(const ClientStanza& stanza, BridgeContext& context) override
    {
        const auto child = stanza.root().first_child();
        waiting_.push_back(
            {context.home.requestKey(stanza.root(), "to"), child.name(), std::string(xml::xmlns(child))});
        if (waiting_.size() > mostWaiting)
            waiting_.pop_front();
        return false;
    }
    bool up(std::shared_ptr<Stanza>& stanza, BridgeContext& context) override
    {
        const auto root = stanza->root();
        const auto isPayload = [](pugi::xml_node child) {
            return child.type() == pugi::node_element && std::string_view(child.name()) != "error";
        };
        if (!stanza::is(root, "iq") || root.find_child(isPayload))
            return false;
        const auto request =
            std::ranges::find(waiting_, context.home.requestKey(root, "from"), &Request::key);
        if (request == waiting_.end())
            return false;
        stanza = stanza::changed(root, [&request](pugi::xml_node copy) {
            copy.prepend_child(request->name.c_str()).append_attribute("xmlns") = request->ns.c_str();
        });
        waiting_.erase(request);
        return false;
    }

private:
    struct Request {
        RequestKey key;
        std::string name;
        std::string ns;
    };
    std::deque<Request> waiting_; // the oldest first
};

} // namespace

std::shared_ptr<Translator> queries::refusals()
{
    return std::make_shared<Refusals>();
}
