#include "messaging/forms/EditCommands.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QPlainTextEdit>

namespace
{

// A control as what it is, a line or a text, or neither.
struct Focused {
    QLineEdit* line = nullptr;
    QPlainTextEdit* text = nullptr;

    explicit Focused(QWidget* focused)
    {
        if (auto* combo = qobject_cast<QComboBox*>(focused))
            focused = combo->lineEdit();
        line = qobject_cast<QLineEdit*>(focused);
        text = qobject_cast<QPlainTextEdit*>(focused);
    }

    bool hasSelection() const
    {
        return (line && line->hasSelectedText()) || (text && text->textCursor().hasSelection());
    }
    bool isEmpty() const { return line ? line->text().isEmpty() : !text || text->document()->isEmpty(); }
};

} // namespace

EditCommands::EditCommands(QMenu* menu, const Actions& actions, QMainWindow* window)
    : QObject(window), actions_(actions), window_(window)
{
    connect(qApp, &QApplication::focusChanged, this, &EditCommands::remember);
    connect(menu, &QMenu::aboutToShow, this, &EditCommands::refresh);
    // Applies the line's or the text's own command to the focused control.
    const auto bind = [this](QAction* action, auto onLine, auto onText) {
        if (!action)
            return;
        connect(action, &QAction::triggered, this, [this, onLine, onText] {
            const Focused focused(target());
            if (focused.line)
                (focused.line->*onLine)();
            else if (focused.text)
                (focused.text->*onText)();
        });
    };
    bind(actions.undo, &QLineEdit::undo, &QPlainTextEdit::undo);
    bind(actions.cut, &QLineEdit::cut, &QPlainTextEdit::cut);
    bind(actions.copy, &QLineEdit::copy, &QPlainTextEdit::copy);
    bind(actions.paste, &QLineEdit::paste, &QPlainTextEdit::paste);
    bind(actions.selectAll, &QLineEdit::selectAll, &QPlainTextEdit::selectAll);
    connect(actions.del, &QAction::triggered, this, &EditCommands::removeSelection);
}

// A menu bar that is opened by its mnemonic takes the focus while it is used.
void EditCommands::remember(QWidget* former, const QWidget* focused)
{
    if (focused && focused == window_->menuWidget())
        beforeMenu_ = former;
}

QWidget* EditCommands::target() const
{
    QWidget* focused = window_->focusWidget();
    return focused && focused == window_->menuWidget() ? beforeMenu_.data() : focused;
}

void EditCommands::refresh()
{
    const Focused focused(target());
    const bool selection = focused.hasSelection();
    for (auto* action : {actions_.cut, actions_.copy, actions_.del})
        action->setEnabled(selection);
    actions_.paste->setEnabled(true);
    actions_.selectAll->setEnabled(selection || !focused.isEmpty());
}

void EditCommands::removeSelection()
{
    const Focused focused(target());
    if (focused.line && !focused.line->isReadOnly())
        focused.line->del();
    else if (focused.text && !focused.text->isReadOnly())
        focused.text->textCursor().removeSelectedText();
}
