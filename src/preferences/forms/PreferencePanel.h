#pragma once

#include "settings/Settings.h"

#include <QString>
#include <QWidget>

#include <functional>
#include <initializer_list>
#include <vector>

class QAbstractButton;
class QComboBox;
class QLineEdit;
class QSpinBox;
struct Client;

// One page of the preferences. Its controls show the settings as they were when the page was first opened;
// SaveSettings stores those that the person has changed since.
class PreferencePanel : public QWidget
{
    Q_OBJECT

public:
    // What a control holds wrongly, in a sentence for the person; an empty text when all is well.
    struct Fault {
        QString text;
        QWidget* control = nullptr;
    };

    // `client` is not owned and outlives the panel.
    explicit PreferencePanel(Client& client) : client_(client) {}

    // The first fault.
    virtual Fault fault() const { return {}; }
    // Stores what was changed; false, and nothing stored, when there is a fault.
    bool SaveSettings();

signals:
    // A setting that takes effect at once has changed.
    void onTopChanged();
    // The blocked list has changed.
    void blockedListChanged();

protected:
    // Tab comes to the chosen one of a group of choices, or to its first.
    void showEvent(QShowEvent* event) override;

    // Shows the setting now, stores it at SaveSettings.
    void bind(QAbstractButton* button, bool Settings::*setting);
    void bind(QLineEdit* edit, QString Settings::*setting);
    void bind(QSpinBox* box, int Settings::*setting);
    // A box for typing, with texts to choose from. `store` gets the changed text.
    void bind(QComboBox* combo, const QStringList& choices, const QString& shown,
              std::function<void(Settings&, const QString&)> store);
    // Runs `store` at every SaveSettings.
    void onSave(std::function<void(Settings&)> store) { stores_.push_back(std::move(store)); }

    // The fields can be used while the box is ticked.
    static void follow(QAbstractButton* box, std::initializer_list<QWidget*> fields);
    // A box for the person; none for an empty text.
    void tell(const QString& error);

    Client& client_;

private:
    std::vector<std::function<void(Settings&)>> stores_;
};
