#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QString>

class FormRegistry;

// Why a form is asked to close.
enum class CloseMode { User, Code, System };

// A window of the program. It enters the registry at its making and leaves it when it is unloaded. Enter
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

    // Opens beside `owner`, on which it works, stays above it and has the focus.
    void showAbove(const QWidget& owner);
    // Shows the form before all other windows, with the focus.
    void bringUp();

    void setDefaultButton(QPushButton* button);
    QPushButton* defaultButton() const { return default_; }
    void setCancelButton(QPushButton* button) { cancel_ = button; }

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

    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    FormRegistry& registry() const { return registry_; }

private:
    void fitContent();
    void fitScreen();

    FormRegistry& registry_;
    QPointer<QPushButton> default_;
    QPointer<QPushButton> cancel_;
    bool unloading_ = false;
};
