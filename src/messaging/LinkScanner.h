#pragma once

#include <QList>
#include <QString>

// A link found in a text.
struct FoundLink {
    qsizetype start;
    qsizetype length;
    QString target; // as the desktop opens it: with a scheme, and escaped
};

// The links of a text, in order: an address that the program opens, or one that begins with "www.". A closing
// bracket or the sentence's punctuation behind an address is not part of it.
QList<FoundLink> findLinks(const QString& text);
