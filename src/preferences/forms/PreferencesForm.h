#pragma once

#include "desktop/forms/Form.h"

#include <memory>

class AdminUsrCtrl;
class PreferencePanel;
class QTreeWidgetItem;
class SettingsStore;
class TransportUsrCtrl;
struct Client;
struct PreferencePage;

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

    // The tree's node of this key, or null. A category comes before a gateway of that name.
    QTreeWidgetItem* FindNode(const QString& key) const;
    // Selects the page of this key and shows its panel; an unknown key changes nothing.
    void showPage(const QString& key);
    // The key of the page on show.
    QString currentPage() const;
    // Shows the panel of the selected node.
    void TreeView1_Click();
    // The panel of this category; null while it was never opened.
    QWidget* panel(const QString& key) const;
    // The panel of the gateway at this address, with a resource or not; null while it was never opened.
    TransportUsrCtrl* gatewayPanel(const QString& address) const;
    AdminUsrCtrl* adminPanel() const;
    // Lists the gateways anew, and the administrators' category once it is theirs. What remains keeps its
    // panel.
    void ReloadList();
    // The connection is gone: panels that wait for an answer stop.
    void sessionEnded();

signals:
    // Settings were applied: whoever shows them draws anew.
    void applied();
    void blockedListChanged();
    void onTopChanged();
    void restoreRequested();
    // A conversation with somebody who is on line.
    void messageRequested(const QString& jid);

protected:
    bool queryUnload(CloseMode mode) override;

private:
    QTreeWidgetItem* findNode(const QString& key, bool gateway) const;
    void addCategory(const PreferencePage& page);
    void dropPanel(const QTreeWidgetItem& node);
    void fitTree();
    void cmdApply_Click();
    void cmdOK_Click();
    void cmdUndo_Click();
    QWidget* panelOf(const QTreeWidgetItem& node) const;
    // Null for a panel that saves nothing.
    PreferencePanel* savingPanelOf(const QTreeWidgetItem& node) const;
    QWidget* addPanel(QTreeWidgetItem& node);
    void askGateway(const QTreeWidgetItem& node);
    void putButtonsBehind(const QWidget& page);
    QList<QTreeWidgetItem*> nodes() const;
    void tellFault(QTreeWidgetItem& node);

    Client& client_;
    SettingsStore& store_;
    std::unique_ptr<Ui::PreferencesForm> ui_;
    QString page_;      // the key of the page on show
    int made_ = 0;      // panels
    bool valid_ = true; // the last apply found every panel valid
};
