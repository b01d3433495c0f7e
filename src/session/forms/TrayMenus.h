#pragma once

#include <QMenu>
#include <QObject>

#include <memory>

// The menu of the tray icon. It tells which entry was chosen; what that does is decided elsewhere.
class TrayMenus : public QObject
{
    Q_OBJECT

public:
    explicit TrayMenus(QObject* parent = nullptr);

    QMenu* menu() const { return menu_.get(); }
    // Takes the menu of the conversations.
    void addConversations(std::unique_ptr<QMenu> menu);
    void setConnected(bool connected);
    // Whether the windows are in the tray: then Restore is offered, else Minimize.
    void setMinimized(bool minimized);
    // Checks the status entry of this index (Available, Away, Extended away, Do not disturb, Free for Chat)
    // alone.
    void checkStatus(int index);

signals:
    void statusChosen(int index);
    void connectChosen();
    void restoreChosen();
    void minimizeChosen();
    void exitChosen();

private:
    QAction* add(QMenu* menu, const char* name, const QString& caption);

    std::unique_ptr<QMenu> menu_;
    std::unique_ptr<QMenu> conversations_;
    QList<QAction*> statuses_;
    QAction* connect_;
    QAction* restore_;
    QAction* minimize_;
};
