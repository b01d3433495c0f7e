#pragma once

#include "desktop/forms/Form.h"

class SessionProperties;

// A window that a session's bag keeps under a key. It leaves the bag when it is unloaded, and goes when the
// bag lets go of it.
class SessionForm : public Form
{
    Q_OBJECT

public:
    using Form::Form;
    ~SessionForm() override;

    // Puts the window into the bag, which owns it from here on.
    void keepIn(SessionProperties& bag, const QString& key);

protected:
    bool isKept() const { return bag_; }
    void unload() override;

private:
    void leaveBag();

    SessionProperties* bag_ = nullptr; // lets go of the window before it dies itself
    QString key_;
};
