#include "engine/bridge/Bridge.h"

#include "engine/bridge/StanzaText.h"
#include "engine/bridge/TranslatorTable.h"
#include "engine/bridge/queries/IqReply.h"

class Bridge::Private
{
public:
    explicit Private(std::vector<TranslatorRow> rows) : table(std::move(rows)) {}

    // True when a translator has dealt with the stanza.
    bool passDown(const QByteArray& text);
    bool passPresenceDown(const QByteArray& text);
    bool passUp(std::shared_ptr<Stanza>& stanza);
    BridgeOutput takeOutput();

    BridgeContext context;
    TranslatorTable table;
};

Bridge::Bridge() : Bridge(TranslatorTable::standard()) {}
Bridge::Bridge(std::vector<TranslatorRow> table) : d_(std::make_unique<Private>(std::move(table))) {}
Bridge::~Bridge() = default;

void Bridge::begin(const Account& account)
{
    d_->context.begin(HomeAddresses(account.ownFullJid, account.server), account.isBlocked);
    d_->table.begin(d_->context);
}

bool Bridge::Private::passDown(const QByteArray& text)
{
    if (text.startsWith("<presence"))
        return passPresenceDown(text);
    const auto stanza = ClientStanza::parsed(text);
    if (!stanza)
        return false;
    if (stanza::is(stanza->root(), "message"))
        return table.down(TranslatorRow::Kind::Message, *stanza, context);
    return stanza::isRequest(stanza->root()) && table.down(TranslatorRow::Kind::Request, *stanza, context);
}

bool Bridge::Private::passPresenceDown(const QByteArray& text)
{
    const auto stanza = ClientStanza::parsed(text);
    if (!stanza)
        return false;
    if (stanza->root().attribute("to"))
        context.audience.directed(stanza->root());
    auto* const receiver = context.presences.to(stanza->root());
    return receiver && receiver->down(*stanza, context);
}

BridgeOutput Bridge::down(const QByteArray& stanza)
{
    auto& context = d_->context;
    if (!d_->passDown(stanza))
        context.out.wire << stanza;
    context.knowledge.learn(context.home.server());
    return d_->takeOutput();
}

bool Bridge::Private::passUp(std::shared_ptr<Stanza>& stanza)
{
    switch (stanza->kind()) {
    case Stanza::Kind::Presence: {
        auto* const receiver = context.presences.from(*stanza);
        return receiver && receiver->up(stanza, context);
    }
    case Stanza::Kind::Message:
        return table.up(TranslatorRow::Kind::Message, stanza, context);
    case Stanza::Kind::Iq:
        return stanza::isRequest(stanza->root()) ? table.up(TranslatorRow::Kind::PeerRequest, stanza, context)
                                                 : context.exchange.take(stanza);
    case Stanza::Kind::Other:
    case Stanza::Kind::Unsent:
    case Stanza::Kind::Uncertain:
        break;
    }
    return false;
}

BridgeOutput Bridge::up(std::shared_ptr<Stanza> stanza)
{
    if (!d_->passUp(stanza))
        d_->context.out.up << std::move(stanza);
    return d_->takeOutput();
}

BridgeOutput Bridge::decline(const Stanza& stanza)
{
    auto& context = d_->context;
    if (stanza::isRequest(stanza.root()) && context.knowledge.homeIsOfToday())
        context.out.wire << reply::absent(stanza.root());
    return d_->takeOutput();
}

BridgeOutput Bridge::tick(qint64 nowMs)
{
    d_->context.timers.tick(nowMs);
    return d_->takeOutput();
}

BridgeOutput Bridge::Private::takeOutput()
{
    auto out = std::exchange(context.out, {});
    for (auto& stanza : out.up) {
        if (stanza::isType(stanza->root(), "error"))
            table.up(TranslatorRow::Kind::Error, stanza, context);
    }
    return out;
}
