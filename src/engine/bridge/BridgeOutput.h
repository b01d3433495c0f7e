#pragma once

#include "engine/Stanza.h"

#include <QByteArray>
#include <QList>

#include <memory>

// What follows from a stanza: texts for the wire (UTF-8, one whole stanza each) and stanzas for the client.
struct BridgeOutput {
    QList<QByteArray> wire;
    QList<std::shared_ptr<Stanza>> up;
};
