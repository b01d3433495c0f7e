#pragma once

#include <QObject>

class RosterForm;
class SessionEnd;
class SessionUi;
class TrayMenus;
class Windows;
struct Client;

// What the entries of the tray's menu do.
class TrayControl : public QObject
{
    Q_OBJECT

public:
    // All must outlive the object.
    TrayControl(Client& client, SessionUi& ui, TrayMenus& menus);

    // A double click on the icon brings a minimised main window back.
    void onDoubleClick();

private:
    void follow(RosterForm& form);
    void onStatus(int index);
    void onConnect();
    void onRestore();
    void onMinimize();

    Client& client_;
    Windows& windows_;
    SessionEnd& end_;
    TrayMenus& menus_;
};
