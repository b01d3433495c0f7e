#pragma once

#include <QJsonObject>
#include <QRandomGenerator>

// Makes stanzas as no decent server sends them: of the words that the client listens to, with odd addresses,
// texts, types and nesting. The same seed makes the same stanzas.
class StanzaMaker
{
public:
    explicit StanzaMaker(QRandomGenerator& random);

    // One whole stanza, well-formed but for one in a thousand.
    QByteArray stanza();
    // An answer to a request that the client sent.
    QByteArray answer(const QString& request);
    // A text as a person or a program might write it.
    QString text();
    QString jid();

    bool chance(int percent) { return random_.bounded(100) < percent; }
    template <typename List>
    auto one(const List& list)
    {
        return *(std::begin(list) + random_.bounded(int(std::size(list))));
    }

private:
    QString word(const char* kind);
    QString presence();
    QString message();
    QString iq();
    QString query(const QString& ns);
    QString element(int depth);
    QString attributes();

    QRandomGenerator& random_;
    QJsonObject words_;
};
