#pragma once

#include "settings/XmlFile.h"

#include <QString>
#include <QStringList>

struct Client;

// The person's prepared status texts: StatusMsgs.xml, one <status type="..."> for each state with one
// <message> for each text.
class StatusLibrary
{
public:
    StatusLibrary();

    // Begins a new file in place of one that can't be understood. A sentence for the person, or an empty
    // text.
    QString renew() const { return file_.renew(); }

    // The states of the file in their order; empty for a file that can't be understood. A missing file is
    // made with texts to begin with.
    QStringList states() const;
    QStringList messages(const QString& state) const;
    // An empty text, or a sentence for the person about what went wrong. Kept: texts can be added to few
    // states only, and their spelling differs from that of choose().
    QString add(const QString& state, const QString& text) const;
    // Removes the text at `index`, counted from 0. An empty text, or what went wrong.
    QString remove(const QString& state, int index) const;

    // Makes `text` the current status text of the state. Kept: the states are compared exactly, so that
    // "Extended Away" and "Free For Chat" change nothing.
    static void choose(Client& client, const QString& state, const QString& text);
    // The current status text of the state, or null for a state that choose() doesn't know.
    static QString* current(Client& client, const QString& state);

private:
    XmlFile file_;
};
