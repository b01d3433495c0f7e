#pragma once

#include "settings/Settings.h"

#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

class QAbstractButton;
class QLineEdit;
class QSpinBox;
struct Client;

// One page of the preferences. Its controls show the settings as they were when the page was first opened,
// and SaveSettings copies them back.
class PreferencePanel : public QWidget
{
    Q_OBJECT

public:
    // `client` is not owned and outlives the panel.
    explicit PreferencePanel(Client& client) : client_(client) {}

    // Copies the controls to the settings; true when they were valid. Otherwise the person is told, the
    // control at fault has the focus and nothing was copied.
    bool SaveSettings();

signals:
    // A setting that takes effect at once has changed.
    void onTopChanged(bool on);
    // The blocked list has changed.
    void blockedListChanged();

protected:
    // Tab comes to the chosen one of a group of choices.
    void showEvent(QShowEvent* event) override;

    // Shows the setting now, stores it at SaveSettings.
    void bind(QAbstractButton* button, bool Settings::*setting);
    void bind(QLineEdit* edit, QString Settings::*setting);
    void bind(QSpinBox* box, int Settings::*setting);
    // Runs `store` at SaveSettings.
    void onSave(std::function<void(Settings&)> store) { stores_.push_back(std::move(store)); }

    // What a control holds wrongly, and which. The first fault is told.
    struct Fault {
        QString text;
        QWidget* control = nullptr;
    };
    // A sentence for the person, with the control at fault; an empty text when all are valid.
    virtual Fault fault() const { return {}; }

    Client& client_;

private:
    std::vector<std::function<void(Settings&)>> stores_;
};
