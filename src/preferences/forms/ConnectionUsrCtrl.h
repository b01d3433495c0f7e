#pragma once

#include "preferences/forms/PreferencePanel.h"

#include <memory>

class SettingsStore;

namespace Ui
{
class ConnectionUsrCtrl;
}

// The page of signing in and of the proxy server.
class ConnectionUsrCtrl : public PreferencePanel
{
    Q_OBJECT

public:
    // Both must outlive the panel.
    ConnectionUsrCtrl(Client& client, SettingsStore& store);
    ~ConnectionUsrCtrl() override;

    Fault fault() const override;

private:
    void keepPassword();
    void Check1_Click(bool on);
    // The agreements to send a password in clear; nothing is shown where there is none.
    void showPlain();
    void forbidPlain();
    void showProxy();
    void saveProxy();
    void enableProxyFields();

    SettingsStore& store_;
    std::unique_ptr<Ui::ConnectionUsrCtrl> ui_;
};
