#pragma once

#include "desktop/forms/Form.h"

#include <memory>

struct Client;

namespace Ui
{
class AboutForm;
}

// The program's name, version, revision and notices, with the way to its web site where one is configured.
class AboutForm : public Form
{
    Q_OBJECT

public:
    AboutForm(Client& client, FormRegistry& registry);
    ~AboutForm() override;

private:
    void showVersions();
    void showWebSite(Client& client);

    std::unique_ptr<Ui::AboutForm> ui_;
};
