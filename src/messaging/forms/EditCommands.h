#pragma once

#include <QObject>
#include <QPointer>

class QAction;
class QMainWindow;
class QMenu;
class QWidget;

// The commands of an edit menu. They work on the control of the window that has the focus, or had it before
// the menu bar took it, and are enabled by its selection each time the menu opens.
class EditCommands : public QObject
{
    Q_OBJECT

public:
    struct Actions {
        QAction* undo; // may be null
        QAction* cut;
        QAction* copy;
        QAction* paste;
        QAction* del;
        QAction* selectAll;
    };

    // The window becomes the owner. Menu and actions must be the window's own.
    EditCommands(QMenu* menu, const Actions& actions, QMainWindow* window);

private:
    void remember(QWidget* former, const QWidget* focused);
    QWidget* target() const;
    void refresh();
    void removeSelection();

    Actions actions_;
    QMainWindow* window_;
    QPointer<QWidget> beforeMenu_;
};
