#pragma once

#include "desktop/forms/Form.h"

#include <memory>

class PreferencePanel;
class QTreeWidgetItem;
class SettingsStore;
struct Client;

namespace Ui
{
class PreferencesForm;
}

// The preferences: categories at the left, the panel of the chosen one at the right. A panel is made when its
// category is first chosen.
class PreferencesForm : public Form
{
    Q_OBJECT

public:
    PreferencesForm(FormRegistry& registry, Client& client, SettingsStore& store);
    ~PreferencesForm() override;

    // The tree's node of this key, or null.
    QTreeWidgetItem* FindNode(const QString& key) const;
    // Selects the page of this key and shows its panel; an unknown key changes nothing.
    void showPage(const QString& key);
    // The key of the page on show.
    QString currentPage() const;
    // Shows the panel of the selected node.
    void TreeView1_Click();
    // The panel of this category; null while it was never opened.
    PreferencePanel* panel(const QString& key) const;

signals:
    // Settings were applied: whoever shows them draws anew.
    void applied();
    void blockedListChanged();
    void onTopChanged();
    void restoreRequested();

protected:
    bool queryUnload(CloseMode mode) override;

private:
    void fillTree();
    void cmdApply_Click();
    void cmdOK_Click();
    void cmdUndo_Click();
    PreferencePanel* panelOf(const QTreeWidgetItem& node) const;
    PreferencePanel* addPanel(QTreeWidgetItem& node);
    void putButtonsBehind(const PreferencePanel& page);
    QList<QTreeWidgetItem*> nodes() const;
    void tellFault(QTreeWidgetItem& node);

    Client& client_;
    SettingsStore& store_;
    std::unique_ptr<Ui::PreferencesForm> ui_;
    bool valid_ = true; // the last apply found every panel valid
};
