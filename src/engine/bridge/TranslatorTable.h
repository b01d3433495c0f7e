#pragma once

#include "engine/bridge/Translator.h"

#include <memory>
#include <string_view>
#include <vector>

// Which stanzas a translator is asked about.
struct TranslatorRow {
    enum class Kind {
        // An iq get or set of the client's.
        Request,
        // An iq get or set of others.
        PeerRequest,
        // Either way.
        Message,
        // Of the JIDs that the translator adds to the context's routes.
        Presence,
        // Whatever goes up as an error; last of all.
        Error
    };
    // Which kind of own server it needs.
    enum class Server { Any, OfToday };

    Kind kind;
    // Of a child; empty for any.
    std::string_view ns;
    Server server;
    // May stand in several rows.
    std::shared_ptr<Translator> translator;
};

// All translators. Those that a stanza concerns are asked in the table's order, until one has dealt with it.
class TranslatorTable
{
public:
    using Kind = TranslatorRow::Kind;

    explicit TranslatorTable(std::vector<TranslatorRow> rows) : rows_(std::move(rows)) {}
    static std::vector<TranslatorRow> standard();

    void begin(BridgeContext& context) const;
    bool down(Kind kind, const ClientStanza& stanza, BridgeContext& context) const;
    bool up(Kind kind, std::shared_ptr<Stanza>& stanza, BridgeContext& context) const;

private:
    std::vector<TranslatorRow> rows_;
};
