#include "preferences/forms/PreferencePanel.h"

#include "contacts/Client.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>

void PreferencePanel::showEvent(QShowEvent* event)
{
    for (auto* choice : findChildren<QRadioButton*>())
        choice->setFocusPolicy(choice->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
    QWidget::showEvent(event);
}

bool PreferencePanel::SaveSettings()
{
    const Fault found = fault();
    if (!found.text.isEmpty()) {
        client_.desktop.boxes->exclamation(tr("Preferences"), found.text);
        if (found.control)
            found.control->setFocus();
        return false;
    }
    for (const auto& store : stores_)
        store(client_.settings);
    return true;
}

void PreferencePanel::bind(QAbstractButton* button, bool Settings::*setting)
{
    button->setChecked(client_.settings.*setting);
    onSave([button, setting](Settings& settings) { settings.*setting = button->isChecked(); });
}

void PreferencePanel::bind(QLineEdit* edit, QString Settings::*setting)
{
    edit->setText(client_.settings.*setting);
    onSave([edit, setting](Settings& settings) { settings.*setting = edit->text(); });
}

void PreferencePanel::bind(QSpinBox* box, int Settings::*setting)
{
    box->setValue(client_.settings.*setting);
    onSave([box, setting](Settings& settings) { settings.*setting = box->value(); });
}
