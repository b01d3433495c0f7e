#pragma once

#include <QString>
#include <QStringList>

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

    // The resource that messages go to: the combo box's, whole also where it is cut to be shown.
    QString chosen() const;

    // A message came from `resource`, or from the bare JID when it is empty.
    void messageCame(const QString& resource, const CRosterItem* contact);
    // A presence came, and the control is to show `resource`; `listed` is the contact to list.
    void presenceCame(const QString& resource, const CRosterItem* listed);

private:
    void choose(const QString& resource);
    void list(const QStringList& resources);
    void unlist(qsizetype place, qsizetype count);
    void show(bool combo);
    void ReflowResourceControls();
    bool isComboShown() const;

    QComboBox& combo_;
    QLineEdit& text_;
    QLabel& label_;
    QStringList listed_; // whole, as the combo box lists them
    QString chosen_;     // whole, what the combo box was last made to show
};
