#pragma once

#include "services/SearchStanzas.h"

#include <QStringList>

class Stanza;

// What a directory of people answers (jabber:iq:search, XEP-0055).
namespace searchanswers
{

// What it can be searched by.
struct Form {
    QString instructions;
    QList<searchstanzas::Field> fields; // with the values that they begin with
    qsizetype leftOut = 0;              // fields beyond what a person could fill in
};
Form form(const Stanza& answer);

// Whom it found. The item with the most children names the columns; the first is that of the address.
struct Results {
    QStringList columns;
    QList<QStringList> rows; // each as long as it has values
    qsizetype leftOut = 0;   // people beyond what anybody could look through
};
Results results(const Stanza& answer);

} // namespace searchanswers
