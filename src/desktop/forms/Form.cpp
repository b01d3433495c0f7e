#include "desktop/forms/Form.h"

#include "desktop/forms/WindowPlace.h"

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

namespace
{

QPointer<QWidget>& expected()
{
    static QPointer<QWidget> window;
    return window;
}

// Frames differ; the last one that was seen is the best guess for the next.
QMargins& usualFrame()
{
    static QMargins frame(4, 28, 4, 4);
    return frame;
}

QPoint centred(QSize frame)
{
    return QRect(QGuiApplication::primaryScreen()->availableGeometry()).center() -
           QRect(QPoint(), frame).center();
}

} // namespace

Form::Form(FormRegistry& registry, const QString& name, QWidget* parent)
    : QMainWindow(parent), registry_(registry)
{
    setObjectName(name);
    settleTimer_.setSingleShot(true);
    settleTimer_.setInterval(200);
    connect(&settleTimer_, &QTimer::timeout, this, &Form::settle);
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
    prepare();
    winId(); // makes the native window
    windowHandle()->setTransientParent(owner.windowHandle());
    show();
    activateWindow();
}

void Form::bringUp()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    if (entry_)
        entry_->setFocus();
}

void Form::setPlace(QPoint place)
{
    place_ = place;
    if (isVisible())
        move(place);
}

void Form::setVisible(bool visible)
{
    if (visible && isHidden())
        prepare();
    else if (!visible && isVisible())
        keepPlace();
    QMainWindow::setVisible(visible);
}

// While the window manager puts its frame around a window, that seems to stand at many a place.
QPoint Form::place() const
{
    if (placed_ && !isMaximized() && windowHandle())
        return windowHandle()->framePosition();
    return place_.value_or(pos());
}

// A window manager takes the state from a window that goes. One that came up maximised goes back to the place
// that it was given.
void Form::keepPlace()
{
    learnFrame();
    const bool cameMaximised = std::exchange(maximised_, isMaximized());
    if (placed_ && !maximised_) {
        place_ = place();
    } else if (placed_ && !cameMaximised) {
        place_ = normalGeometry().marginsAdded(expectedFrame()).topLeft();
        normal_ = normalGeometry().size();
    }
    prepared_ = placed_ = false;
}

QMargins Form::expectedFrame() const
{
    return frame_.value_or(usualFrame());
}

// What the window manager knows of a window outlives its hiding: that it came up as an icon, that it was
// never moved by itself. So a window that is shown again is a new one, and takes its place before it has a
// frame, which the window manager then puts there.
void Form::prepare()
{
    if (std::exchange(prepared_, true))
        return;
    if (testAttribute(Qt::WA_WState_Created)) {
        destroy();
        // So that a maximised window knows what it goes back to.
        setWindowState(windowState() & ~Qt::WindowMaximized);
        if (maximised_ && normal_.isValid())
            resize(normal_);
    }
    ensurePolished();
    if (!testAttribute(Qt::WA_Resized)) {
        adjustSize();
        setAttribute(Qt::WA_Resized, false);
    }
    fitScreen();
    takePlace();
    // The new native window knows of no state.
    if (maximised_)
        setWindowState(windowState() | Qt::WindowMaximized);
    create();
    windowHandle()->installEventFilter(this);
    takePlace(); // again, reckoned with the frame that it had
}

void Form::takePlace()
{
    if (!place_)
        return;
    const QSize least = minimumSize().isEmpty() ? minimumSizeHint() : minimumSize();
    const QRect frame(*place_, size().expandedTo(least).grownBy(expectedFrame()));
    const QPoint corner =
        windowplace::onAScreen(frame, windowplace::screens()).value_or(centred(frame.size()));
    if (frame_ && testAttribute(Qt::WA_WState_Created))
        setGeometry(QRect(corner + QPoint(frame_->left(), frame_->top()), size()));
    else
        move(corner);
}

void Form::setDefaultButton(QPushButton* button)
{
    if (default_)
        default_->setDefault(false);
    default_ = button;
    if (button)
        button->setDefault(true);
}

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

// A window is seen, and has the keys, only where the window manager put it.
bool Form::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Expose && watched == windowHandle() && windowHandle()->isExposed())
        placed_ = prepared_;
    return QMainWindow::eventFilter(watched, event);
}

void Form::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (placed_ && !isMaximized() && !isMinimized())
        maximised_ = false;
    const bool concerned =
        event->type() == QEvent::ActivationChange || event->type() == QEvent::WindowStateChange;
    if (!concerned || !isActiveWindow())
        return;
    expectActive(nullptr);
    if (isMinimized())
        return;
    placed_ = prepared_;
    learnFrame();
    if (looks_ > 0)
        settleTimer_.start();
    emit activated();
}

void Form::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (!event->spontaneous() && !testAttribute(Qt::WA_ShowWithoutActivating))
        expectActive(this);
    if (event->spontaneous())
        return;
    shown_ = true;
    if (entry_)
        entry_->setFocus();
    looks_ = 10;
    if (!maximised_ && !isMaximized() && !isFullScreen()) {
        fitContent();
        fitScreen();
    }
    // The toolkit forgets the state of a window that it moves or resizes now, so that one that was to be an
    // icon would come up before all others. So the state is the last that the native window hears of.
    place_ ? windowHandle()->setGeometry(geometry()) : windowHandle()->resize(size());
    const auto states = windowState() & ~Qt::WindowActive;
    windowHandle()->setWindowStates(maximised_ ? states | Qt::WindowMaximized : states);
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
    const auto* at = place_ ? QGuiApplication::screenAt(*place_) : nullptr;
    const QSize largest = (at ? at : screen())->availableSize().shrunkBy(expectedFrame());
    if (size() == size().boundedTo(largest))
        return;
    wished_ = wishedSize();
    setMinimumSize(minimumSize().boundedTo(largest));
    resize(size().boundedTo(largest));
    fitted_ = size();
}

void Form::learnFrame()
{
    const QMargins frame = placed_ && windowHandle() ? windowHandle()->frameMargins() : QMargins();
    if (frame.isNull() || isMaximized() || isMinimized())
        return;
    frame_ = usualFrame() = frame;
}

// The frame may be wider than the one that was reckoned with. What the window manager did is heard of piece
// by piece: only what stands at two looks counts.
void Form::settle()
{
    if (!isVisible() || isMaximized() || isMinimized())
        return;
    const QRect frame = windowHandle()->frameGeometry();
    if (std::exchange(seen_, frame) != frame) {
        if (--looks_ > 0)
            settleTimer_.start();
        return;
    }
    looks_ = 0;
    learnFrame();
    const auto place = windowplace::onAScreen(frame, windowplace::screens());
    if (place && *place != frame.topLeft())
        setGeometry(geometry().translated(*place - frame.topLeft()));
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
