#include "messaging/forms/ResourceControls.h"

#include "contacts/Collections.h"
#include "messaging/LongLines.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

ResourceControls::ResourceControls(QComboBox& ComboResource, QLineEdit& txtTOR, QLabel& lblResource)
    : combo_(ComboResource), text_(txtTOR), label_(lblResource)
{
    QObject::connect(&combo_, &QComboBox::activated, &combo_,
                     [this](int place) { chosen_ = listed_.value(place); });
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
    QStringList resources = contact ? contact->Resources : QStringList();
    resources.removeAll(QString());
    if (resources == listed_)
        return;
    const QString text = combo_.currentText();
    const QSignalBlocker quiet(combo_);
    list(resources);
    if (combo_.currentText() != text)
        combo_.setEditText(text);
}

// Who stands in both lists stays: in a flood of resources one goes and one comes at a time.
void ResourceControls::list(const QStringList& resources)
{
    for (qsizetype place = 0; place < resources.size(); ++place) {
        const auto standing = listed_.indexOf(resources.at(place), place);
        if (standing < 0) {
            combo_.insertItem(int(place), longlines::shownLine(resources.at(place)));
            listed_.insert(place, resources.at(place));
        } else {
            unlist(place, standing - place);
        }
    }
    unlist(resources.size(), listed_.size() - resources.size());
}

void ResourceControls::unlist(qsizetype place, qsizetype count)
{
    for (; count > 0; --count) {
        if (combo_.currentIndex() == place)
            combo_.setCurrentIndex(-1); // or the text would become the next one's
        combo_.removeItem(int(place));
        listed_.removeAt(place);
    }
}

QString ResourceControls::chosen() const
{
    const QString text = combo_.currentText();
    return text == longlines::shownLine(chosen_) ? chosen_ : text;
}

void ResourceControls::choose(const QString& resource)
{
    chosen_ = resource;
    combo_.setEditText(longlines::shownLine(resource));
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
    const QString sender = resource.isEmpty() ? FirstResource(*contact) : resource;
    if (isComboShown() && chosen() != sender)
        choose(sender);
    else if (!isComboShown() && text_.text() != longlines::shownLine(sender))
        text_.setText(longlines::shownLine(sender));
}

void ResourceControls::presenceCame(const QString& resource, const CRosterItem* listed)
{
    FillResourceCombo(listed);
    show(combo_.count() > 1);
    if (isComboShown())
        choose(resource);
    else
        text_.setText(longlines::shownLine(resource));
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
    QWidget* shown = isComboShown() ? static_cast<QWidget*>(&combo_) : &text_;
    if (label_.buddy() != shown)
        label_.setBuddy(shown);
}

bool ResourceControls::isComboShown() const
{
    return !combo_.isHidden();
}
