#pragma once

#include <QList>
#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QRect>
#include <QString>
#include <QTimer>

#include <optional>

class FormRegistry;

// Why a form is asked to close.
enum class CloseMode { User, Code, System };

// A window of the program. It enters the registry at its making and leaves it when it is unloaded. However it
// is shown, it returns to the place that it had, wholly on a screen, with the caret in its entry. Enter
// clicks the default button and Escape the cancel button, as in a dialog.
class Form : public QMainWindow
{
    Q_OBJECT

public:
    // `name` becomes the object name, by which several rules tell forms apart.
    Form(FormRegistry& registry, const QString& name, QWidget* parent = nullptr);
    ~Form() override;

    // Free text that belongs to the form: a position, a JID.
    QString Tag;

    // Asks queryUnload and, if the form agrees, runs unload and releases the form. False when the form
    // refused.
    bool requestUnload(CloseMode mode);

    // The active window, or the one that the window manager is about to make active: it was shown last, or a
    // dialog has just been closed above it. Null for none.
    static QWidget* inUse();
    // The window manager is about to make this window active.
    static void expectActive(QWidget* window);

    // Opens beside `owner`, on which it works, stays above it and has the focus.
    void showAbove(const QWidget& owner);
    // Shows the form before all other windows, with the focus. For windows that the person asks for.
    void bringUp();
    // Whether the person has ever seen the form.
    bool wasShown() const { return shown_; }
    // Where the frame is to stand from here on.
    void setPlace(QPoint place);
    // The frame's corner: where it stands, or is to stand when the form comes up.
    QPoint place() const;
    // The size that the form would have if the screen were not too small for it.
    QSize wishedSize() const { return size() == fitted_ ? wished_ : size(); }

    void setDefaultButton(QPushButton* button);
    QPushButton* defaultButton() const { return default_; }
    void setCancelButton(QPushButton* button) { cancel_ = button; }
    // The control that has the keyboard whenever the form comes up.
    void setEntry(QWidget* entry) { entry_ = entry; }

    void setVisible(bool visible) override;

signals:
    // The person works with the form now.
    void activated();

protected:
    // May refuse the close; a form that only hides does so here.
    virtual bool queryUnload(CloseMode) { return true; }
    // The same without asking.
    void unloadNow();
    // The form's last act.
    virtual void unload() {}
    // What becomes of an unloaded form: it is deleted when control returns to the event loop, and no box or
    // menu stands open on one of its handlers.
    virtual void release();

    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    FormRegistry& registry() const { return registry_; }

private:
    void prepare();
    void keepPlace();
    void takePlace();
    QMargins expectedFrame() const;
    void fitContent();
    void fitScreen();
    void learnFrame();
    void settle();

    FormRegistry& registry_;
    QPointer<QPushButton> default_;
    QPointer<QPushButton> cancel_;
    QPointer<QWidget> entry_;
    std::optional<QPoint> place_;   // of the frame; null while the window manager chooses it
    std::optional<QMargins> frame_; // that it had last
    bool shown_ = false;
    bool prepared_ = false; // shown, or about to be
    bool placed_ = false;   // the window manager has put it where it stands
    QTimer settleTimer_;
    QRect seen_;             // the frame at the last look
    bool maximised_ = false; // when it was hidden last, and not since
    QSize normal_;           // when it was hidden last maximised
    QSize wished_;           // before the screen was too small for it
    QSize fitted_;           // what the screen made of it
    int looks_ = 0;          // left, since it was shown, to find the frame standing still
    bool unloading_ = false;
};

// The loaded forms, in the order of their loading, and the single instances among them, made at first use.
class FormRegistry
{
public:
    // The names and tags of the loaded forms can be read through the list.
    QList<Form*> loaded() const { return forms_; }
    Form* find(const QString& name) const;
    bool isLoaded(const Form* form) const { return forms_.contains(const_cast<Form*>(form)); }

    // The loaded form of this type that carries this Tag, or null.
    template <typename T>
    T* tagged(const QString& tag) const
    {
        for (auto* form : forms_) {
            auto* found = qobject_cast<T*>(form);
            if (found && found->Tag == tag)
                return found;
        }
        return nullptr;
    }

    // The single instance of a form, made by `make` when it isn't loaded.
    template <typename T, typename Make>
    T& single(const QString& name, Make&& make)
    {
        if (auto* form = qobject_cast<T*>(find(name)))
            return *form;
        return *make();
    }

    // Asks every loaded form to unload, save those named in `except`. Forms may refuse.
    void unloadAllExcept(const QStringList& except, CloseMode mode = CloseMode::Code);

    // Deletes every form that is left, save `kept`, without asking: loaded ones and unloaded ones that still
    // wait for their end.
    void deleteAllExcept(const Form* kept);

    void add(Form* form) { forms_.append(form); }
    // The form is unloaded: it isn't found any more.
    void leave(Form* form)
    {
        if (forms_.removeOne(form))
            unloaded_.append(form);
    }
    void remove(Form* form)
    {
        forms_.removeOne(form);
        unloaded_.removeOne(form);
    }

private:
    QList<Form*> forms_;
    QList<Form*> unloaded_;
};
