#include "support/UiDriver.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QTimer>

namespace ui
{

QPoint activePart(const QWidget* control)
{
    const bool radio = qobject_cast<const QRadioButton*>(control);
    if (!radio && !qobject_cast<const QCheckBox*>(control))
        return control->rect().center();
    const auto* button = static_cast<const QAbstractButton*>(control);
    QStyleOptionButton option;
    option.initFrom(button);
    option.text = button->text();
    option.icon = button->icon();
    option.iconSize = button->iconSize();
    const auto part = radio ? QStyle::SE_RadioButtonClickRect : QStyle::SE_CheckBoxClickRect;
    return button->style()->subElementRect(part, &option, button).center();
}

void click(const QWidget* form, const char* name)
{
    auto* control = find<QWidget>(form, name);
    if (!control->isEnabled() || !control->isVisible())
        qFatal("control %s can't be clicked", name);
    QTest::mouseClick(control, Qt::LeftButton, {}, activePart(control));
}

void type(const QWidget* form, const char* name, const QString& text)
{
    auto* control = find<QWidget>(form, name);
    auto* combo = qobject_cast<QComboBox*>(control);
    auto* line = combo ? combo->lineEdit() : qobject_cast<QLineEdit*>(control);
    if (!line)
        qFatal("control %s takes no text", name);
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, text);
}

void choose(const QObject* form, const char* name)
{
    auto* action = find<QAction>(form, name);
    if (!action->isEnabled())
        qFatal("entry %s is disabled", name);
    action->trigger();
}

void onNextDialog(std::function<void(QWidget*)> answer)
{
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, answer = std::move(answer)] {
        if (auto* dialog = QApplication::activeModalWidget()) {
            timer->deleteLater();
            timer->stop();
            answer(dialog);
        }
    });
    timer->start(1);
}

} // namespace ui
