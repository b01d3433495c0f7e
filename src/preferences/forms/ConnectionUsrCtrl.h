#pragma once

#include "preferences/forms/PreferencePanel.h"

#include <memory>

namespace Ui
{
class ConnectionUsrCtrl;
}

// The page of signing in and of the proxy server.
class ConnectionUsrCtrl : public PreferencePanel
{
    Q_OBJECT

public:
    explicit ConnectionUsrCtrl(Client& client);
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

    std::unique_ptr<Ui::ConnectionUsrCtrl> ui_;
};
