#pragma once

#include "engine/Stanza.h"

#include <QByteArray>
#include <QList>
#include <pugixml.hpp>

#include <memory>
#include <optional>

// A stanza that the client sends: as it wrote it, and parsed. Copies share the document, so a stanza that has
// to wait for an answer is simply kept.
struct ClientStanza {
    // Nothing for a text that isn't well-formed.
    static std::optional<ClientStanza> parsed(const QByteArray& text)
    {
        const auto document = std::make_shared<pugi::xml_document>();
        constexpr unsigned options = pugi::parse_default | pugi::parse_ws_pcdata;
        if (!document->load_buffer(text.constData(), static_cast<std::size_t>(text.size()), options,
                                   pugi::encoding_utf8))
            return std::nullopt;
        return ClientStanza{text, document};
    }

    pugi::xml_node root() const { return document->document_element(); }

    QByteArray text;
    std::shared_ptr<const pugi::xml_document> document;
};

// What follows from a stanza: texts for the wire (UTF-8, one whole stanza each) and stanzas for the client.
struct BridgeOutput {
    QList<QByteArray> wire;
    QList<std::shared_ptr<Stanza>> up;
};
