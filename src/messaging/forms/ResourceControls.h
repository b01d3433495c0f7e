#pragma once

#include <QString>

class QComboBox;
class QLabel;
class QLineEdit;
struct CRosterItem;

// The two controls that share the place of a peer's resource: a combo box for several resources, a text box
// for one at most. A contact may be null everywhere: a peer that isn't in the contact list.
class ResourceControls
{
public:
    // The controls must outlive the object.
    ResourceControls(QComboBox& ComboResource, QLineEdit& txtTOR, QLabel& lblResource);

    // Picks the control for a new window.
    void SetupResourceControls(const CRosterItem* contact);
    // Lists the contact's resources anew. Kept: the text stays, so that a stale resource in a hidden combo
    // box still addresses messages.
    void FillResourceCombo(const CRosterItem* contact);
    static bool NoResourcesLeft(const CRosterItem& contact);
    // Empty when there is none.
    static QString FirstResource(const CRosterItem& contact);

    // A message came from `resource`, or from the bare JID when it is empty.
    void messageCame(const QString& resource, const CRosterItem* contact);
    // A presence came, and the control is to show `resource`; `listed` is the contact to list.
    void presenceCame(const QString& resource, const CRosterItem* listed);

private:
    void show(bool combo);
    void ReflowResourceControls();
    bool isComboShown() const;

    QComboBox& combo_;
    QLineEdit& text_;
    QLabel& label_;
};
