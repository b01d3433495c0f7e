#pragma once

#include <QAbstractButton>
#include <QAction>
#include <QString>
#include <QTest>
#include <QWidget>

#include <functional>

// Drives real windows by the names of their controls. A control that isn't there fails the test.
namespace ui
{

// The control of this name below `form`.
template <typename Control>
Control* find(const QObject* form, const char* name)
{
    auto* control = form ? form->findChild<Control*>(QLatin1String(name)) : nullptr;
    if (!control)
        qFatal("no control %s", name);
    return control;
}

// Where a control answers a click: of a check box and a radio button only the mark and the text, however wide
// the control is.
QPoint activePart(const QWidget* control);
// A left click on the control's active part; a disabled or hidden control fails the test.
void click(const QWidget* form, const char* name);
// Replaces the text of a line edit or an editable combo box as a person would type it.
void type(const QWidget* form, const char* name, const QString& text);
// Triggers a menu entry or a tool bar button; a disabled one fails the test.
void choose(const QObject* form, const char* name);

// Runs `answer` on the next modal dialog as soon as it is up, inside its own event loop.
void onNextDialog(std::function<void(QWidget*)> answer);

} // namespace ui
