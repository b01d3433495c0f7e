#pragma once

#include "engine/ApplicationPlugIn.h"

#include <QString>
#include <QWidget>

class BrowseList;
class Stanza;
struct Client;

// A list of what a server offers: the rooms of its room services, or its user directories. It fills itself
// from the answers to browse requests (jabber:iq:browse, XEP-0011), and asks on where these only name who
// knows.
class BrowseUsrCtrl : public QWidget, public ApplicationPlugIn
{
    Q_OBJECT

public:
    explicit BrowseUsrCtrl(QWidget* parent = nullptr);
    // To be called once; the client must outlive the control.
    void setClient(const Client& client) { client_ = &client; }

    ApplicationPlugIn* Myapplicationplugin() { return this; }
    // "CHATROOM" for a list of rooms.
    QString MyType;
    // What the person chose; empty for nothing.
    QString SelectedJID;
    // Whether public rooms are wanted, or private ones.
    bool publicRooms = true;

    // The person wants the rooms of the other kind. Nothing is asked before the search.
    void forgetOtherKind();

    // Kept without an effect.
    void Browse(const QString&) {}
    // A row that no answer named.
    void ForceInsertion(const QString& jid);
    // What an empty list says.
    void setHint(const QString& text);

    void OnIQ(PlugInContext& context) override;

signals:
    // A room service answered; rooms that are made lie on it.
    void roomServiceFound(const QString& jid);
    void directoryFound();
    // False when nothing is chosen any more.
    void chosen(bool something);
    // The chosen row is to be opened: a double click, or Enter.
    void opened();

private:
    void findRoomServices(const PlugInContext& context);
    void listRooms(const Stanza& answer);
    // Says so in the empty list when the answer is an error.
    bool tellRefusal(const Stanza& answer);
    void findDirectories(const PlugInContext& context);
    void listDirectories(const Stanza& answer);
    void useKnownDirectory(const PlugInContext& context);
    static QString noDirectory();
    void choose();
    void open();

    const Client* client_ = nullptr;
    bool listsPublic_ = true;     // the kind of the rooms in the list
    QString lastService_[2] = {}; // the private and the public one that the server named last
    BrowseList* BrowseResult;
};
