#pragma once

#include <QString>

struct Client;

// What the person blocks and unblocks: the list in memory and its file change together. The file is
// BannedList.xml, <banned> with one <item> for each blocked address.
//
// Operations yield an empty text, or a sentence for the person about what went wrong.
class BlockedContacts
{
public:
    explicit BlockedContacts(Client& client) : client_(client) {}

    // Takes in what the file holds and the list doesn't: before the sign-in the list is empty. A missing file
    // is made.
    QString load();
    // Whether `JID` is blocked, by itself or by its bare JID.
    bool contains(const QString& JID) const;
    // Blocks a bare JID, or the whole one of a room's occupant; the file may hold it twice. Where the file
    // can't be written, the contact stays blocked for this run.
    QString add(const QString& JID);
    // Unblocks the entry at `position`, counted from 1, and removes it from the file where it stands first.
    // Where the file can't be written, it stays blocked.
    QString remove(int position);

    // The address that `text`, typed by a person, blocks: trimmed, bare and in lower case, as servers write
    // it. Empty when the text can't be an address.
    static QString addressOf(const QString& text);

private:
    Client& client_;
};
