#include "messaging/forms/ResourceControls.h"

#include "contacts/Collections.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

ResourceControls::ResourceControls(QComboBox& ComboResource, QLineEdit& txtTOR, QLabel& lblResource)
    : combo_(ComboResource), text_(txtTOR), label_(lblResource)
{
    show(combo_.count() > 1);
}

void ResourceControls::SetupResourceControls(const CRosterItem* contact)
{
    const bool several = contact && contact->Resources.size() > 1;
    show(several);
    if (several)
        FillResourceCombo(contact);
}

void ResourceControls::FillResourceCombo(const CRosterItem* contact)
{
    const QString text = combo_.currentText();
    const QSignalBlocker quiet(combo_);
    combo_.clear();
    for (const auto& resource : contact ? contact->Resources : QStringList()) {
        if (!resource.isEmpty())
            combo_.addItem(resource);
    }
    combo_.setEditText(text);
}

bool ResourceControls::NoResourcesLeft(const CRosterItem& contact)
{
    return contact.Resources.isEmpty();
}

QString ResourceControls::FirstResource(const CRosterItem& contact)
{
    return contact.Resources.value(0);
}

void ResourceControls::messageCame(const QString& resource, const CRosterItem* contact)
{
    const bool listed = contact && !contact->Resources.isEmpty();
    if (resource.isEmpty() && !listed)
        return;
    const QString shown = resource.isEmpty() ? FirstResource(*contact) : resource;
    if (isComboShown() && combo_.currentText() != shown)
        combo_.setEditText(shown);
    else if (!isComboShown() && text_.text() != shown)
        text_.setText(shown);
}

void ResourceControls::presenceCame(const QString& resource, const CRosterItem* listed)
{
    FillResourceCombo(listed);
    show(combo_.count() > 1);
    if (isComboShown())
        combo_.setEditText(resource);
    else
        text_.setText(resource);
}

void ResourceControls::show(bool combo)
{
    combo_.setVisible(combo);
    text_.setVisible(!combo);
    ReflowResourceControls();
}

// The layout gives the row to the visible one; the label has to follow it.
void ResourceControls::ReflowResourceControls()
{
    label_.setBuddy(isComboShown() ? static_cast<QWidget*>(&combo_) : &text_);
}

bool ResourceControls::isComboShown() const
{
    return !combo_.isHidden();
}
