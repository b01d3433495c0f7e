#pragma once

#include <QCoreApplication>
#include <QString>
#include <pugixml.hpp>

// What an <error/> says (RFC 6120, 8.3), whichever way it says it: by a condition element, or by the number
// of the old dialect (XEP-0086).
struct StanzaError {
    Q_DECLARE_TR_FUNCTIONS(StanzaError)

public:
    // `stanza` is the iq, message or presence. Without an <error/> it is code 500.
    static StanzaError of(pugi::xml_node stanza);

    // The receiver doesn't know the request: another way of asking may do.
    bool isUnsupported() const { return code == 503 || code == 501; }
    // `serverText`, or else a sentence for the code.
    QString sentence() const;

    int code = 500;
    QString serverText;
};
