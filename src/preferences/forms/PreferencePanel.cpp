#include "preferences/forms/PreferencePanel.h"

#include "contacts/Client.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>

namespace
{

// Stores `read()` when it is no longer what was shown.
template <typename Value, typename Read>
auto storeChanged(Value Settings::*setting, Read read)
{
    return [setting, read, shown = Value(read())](Settings& settings) mutable {
        if (shown != read())
            settings.*setting = shown = read();
    };
}

} // namespace

bool PreferencePanel::SaveSettings()
{
    if (!fault().text.isEmpty())
        return false;
    for (const auto& store : stores_)
        store(client_.settings);
    return true;
}

void PreferencePanel::showEvent(QShowEvent* event)
{
    QHash<QObject*, QRadioButton*> entries;
    const auto choices = findChildren<QRadioButton*>();
    for (auto* choice : choices) {
        if (choice->isChecked() || !entries.contains(choice->parent()))
            entries[choice->parent()] = choice;
    }
    for (auto* choice : choices)
        choice->setFocusPolicy(entries[choice->parent()] == choice ? Qt::StrongFocus : Qt::ClickFocus);
    QWidget::showEvent(event);
}

void PreferencePanel::bind(QAbstractButton* button, bool Settings::*setting)
{
    button->setChecked(client_.settings.*setting);
    onSave(storeChanged(setting, [button] { return button->isChecked(); }));
}

void PreferencePanel::bind(QLineEdit* edit, QString Settings::*setting)
{
    edit->setText(client_.settings.*setting);
    onSave(storeChanged(setting, [edit] { return edit->text(); }));
}

void PreferencePanel::bind(QSpinBox* box, int Settings::*setting)
{
    box->setValue(client_.settings.*setting);
    onSave(storeChanged(setting, [box] { return box->value(); }));
}

void PreferencePanel::bind(QComboBox* combo, const QStringList& choices, const QString& shown,
                           std::function<void(Settings&, const QString&)> store)
{
    combo->setCompleter(nullptr); // what is typed stays what was typed
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->addItems(choices);
    combo->setEditText(shown);
    onSave([combo, known = QString(shown), store = std::move(store)](Settings& settings) mutable {
        if (combo->currentText() != known)
            store(settings, known = combo->currentText());
    });
}

void PreferencePanel::follow(QAbstractButton* box, std::initializer_list<QWidget*> fields)
{
    for (QWidget* field : fields) {
        connect(box, &QAbstractButton::toggled, field, &QWidget::setEnabled);
        field->setEnabled(box->isChecked());
    }
}

void PreferencePanel::tell(const QString& error)
{
    if (!error.isEmpty())
        client_.desktop.boxes->exclamation(tr("Preferences"), error);
}
