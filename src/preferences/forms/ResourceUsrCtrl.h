#pragma once

#include "preferences/forms/PreferencePanel.h"

#include <memory>

namespace Ui
{
class ResourceUsrCtrl;
}

// The page of the place where the person is signed in: its resource and its priority (RFC 6121).
class ResourceUsrCtrl : public PreferencePanel
{
    Q_OBJECT

public:
    explicit ResourceUsrCtrl(Client& client);
    ~ResourceUsrCtrl() override;

    Fault fault() const override;

private:
    std::unique_ptr<Ui::ResourceUsrCtrl> ui_;
};
