#include "desktop/forms/Form.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QPushButton>
#include <QScreen>
#include <QThread>
#include <QTimer>
#include <QWindow>

#include <utility>

Form::Form(FormRegistry& registry, const QString& name, QWidget* parent)
    : QMainWindow(parent), registry_(registry)
{
    setObjectName(name);
    registry_.add(this);
}

Form::~Form()
{
    registry_.remove(this);
}

bool Form::requestUnload(CloseMode mode)
{
    if (unloading_)
        return true;
    if (!queryUnload(mode))
        return false;
    unloadNow();
    return true;
}

void Form::unloadNow()
{
    if (std::exchange(unloading_, true))
        return;
    unload();
    registry_.leave(this);
    hide();
    release();
}

void Form::release()
{
    const bool inUse =
        QApplication::activeModalWidget() || QApplication::activePopupWidget() || thread()->loopLevel() > 1;
    if (inUse)
        QTimer::singleShot(50, this, &Form::release);
    else
        deleteLater();
}

void Form::showAbove(const QWidget& owner)
{
    if (!isVisible())
        setWindowFlag(Qt::Dialog);
    winId(); // makes the native window
    windowHandle()->setTransientParent(owner.windowHandle());
    show();
    activateWindow();
}

void Form::bringUp()
{
    show();
    raise();
    activateWindow();
}

void Form::setDefaultButton(QPushButton* button)
{
    if (default_)
        default_->setDefault(false);
    default_ = button;
    if (button)
        button->setDefault(true);
}

namespace
{

QPointer<QWidget>& expected()
{
    static QPointer<QWidget> window;
    return window;
}

} // namespace

QWidget* Form::inUse()
{
    if (auto* active = QApplication::activeWindow())
        return active;
    return expected() && expected()->isVisible() && !expected()->isMinimized() ? expected().data() : nullptr;
}

void Form::expectActive(QWidget* window)
{
    expected() = window;
}

void Form::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        expectActive(nullptr);
}

void Form::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (!event->spontaneous() && !testAttribute(Qt::WA_ShowWithoutActivating))
        expectActive(this);
    if (event->spontaneous() || isMaximized() || isFullScreen())
        return;
    fitContent();
    fitScreen();
}

// A main window knows nothing of labels that grow in height as they wrap.
void Form::fitContent()
{
    const auto* layout = centralWidget() ? centralWidget()->layout() : nullptr;
    if (!layout || !layout->hasHeightForWidth())
        return;
    const int missing = layout->totalHeightForWidth(centralWidget()->width()) - centralWidget()->height();
    if (missing > 0)
        resize(width(), height() + missing);
}

// No button may lie beyond the edge of a small screen.
void Form::fitScreen()
{
    constexpr QSize frame(8, 32); // what window managers put around a window, about
    const QSize room = screen()->availableSize() - frame;
    const QSize fitting = size().boundedTo(room);
    if (fitting == size())
        return;
    setMinimumSize(minimumSize().boundedTo(room));
    resize(fitting);
    move(screen()->availableGeometry().topLeft());
}

void Form::closeEvent(QCloseEvent* event)
{
    if (requestUnload(CloseMode::User))
        event->accept();
    else
        event->ignore();
}

void Form::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    auto* focused = qobject_cast<QPushButton*>(focusWidget());
    if (enter && (focused || default_)) {
        (focused ? focused : default_.data())->click();
    } else if (event->key() == Qt::Key_Escape && cancel_) {
        cancel_->click();
    } else {
        QMainWindow::keyPressEvent(event);
    }
}

Form* FormRegistry::find(const QString& name) const
{
    for (auto* form : forms_) {
        if (form->objectName() == name)
            return form;
    }
    return nullptr;
}

void FormRegistry::unloadAllExcept(const QStringList& except, CloseMode mode)
{
    const auto forms = forms_;
    for (auto* form : forms) {
        if (isLoaded(form) && !except.contains(form->objectName()))
            form->requestUnload(mode);
    }
}

void FormRegistry::deleteAllExcept(const Form* kept)
{
    const auto forms = forms_ + unloaded_;
    for (auto* form : forms) {
        if (form != kept && (isLoaded(form) || unloaded_.contains(form)))
            delete form;
    }
}
