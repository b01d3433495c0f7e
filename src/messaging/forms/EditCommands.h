#pragma once

#include <QObject>

class QAction;
class QMainWindow;
class QMenu;

// The commands of an edit menu. They work on the control of the window that has the focus, and are enabled by
// its selection each time the menu opens.
class EditCommands : public QObject
{
    Q_OBJECT

public:
    struct Actions {
        QAction* undo;
        QAction* cut;
        QAction* copy;
        QAction* paste;
        QAction* del;
        QAction* selectAll;
    };

    // The window becomes the owner. Menu and actions must be the window's own.
    EditCommands(QMenu* menu, const Actions& actions, QMainWindow* window);

private:
    void refresh();
    void removeSelection();

    Actions actions_;
    QMainWindow* window_;
};
