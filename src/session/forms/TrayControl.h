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

    // A click on the icon opens what waits longest to be read.
    void onClick();
    // A double click brings a main window back that is minimised or in the tray.
    void onDoubleClick();
    // Brings up the window that the person would look for: the program was started once more.
    void bringUp();

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
    bool clickTaken_ = false; // the first of what may be a double click opened a conversation
};
