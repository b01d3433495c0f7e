#pragma once

#include <QList>
#include <QString>

#include <optional>

class Stanza;

// What a gateway asks of those who register with it (jabber:iq:register, XEP-0077), and the stanzas of a
// registration. Values are escaped as they are placed.
struct GatewayForm {
    struct Field {
        QString name; // the element's, as the gateway spelled it
        QString value;

        // What is typed here is hidden.
        bool isSecret() const;
        // Whether an element of this name can go back: it needs no prefix that only the gateway declared.
        bool canBeSent() const;
        bool operator==(const Field&) const = default;
    };

    // Nobody fills in more.
    static constexpr qsizetype mostFields = 200;

    QList<Field> fields; // in the gateway's order, the first `mostFields`
    qsizetype asked = 0; // all that the gateway asked for
    QString instructions;
    QString key;                           // names the exchange, and goes back with it
    std::optional<qsizetype> registeredAt; // how many fields came before the word that one is registered
    bool hasOtherForm = false;             // something of another namespace, which isn't shown

    // The form in an answer, or null when it holds none.
    static std::optional<GatewayForm> of(const Stanza& answer);

    // Asks for the form.
    static QString query(const QString& jid);
    // Registers; fields that can't be sent are left out.
    static QString submission(const QString& jid, const QList<Field>& fields, const QString& key);
    // Takes the registration back.
    static QString removal(const QString& jid, const QString& key);
};
