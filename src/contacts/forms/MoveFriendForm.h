#pragma once

#include "desktop/forms/Form.h"

#include <memory>

struct Client;
struct TreeNode;

namespace Ui
{
class MoveFriendForm;
}

// Moves one contact to another group.
class MoveFriendForm : public Form
{
    Q_OBJECT

public:
    MoveFriendForm(FormRegistry& registry, Client& client);
    ~MoveFriendForm() override;

    // The contact to move; it stands below a group. What the tree shows now decides later whether the old
    // group goes.
    void setContact(const TreeNode& node);

signals:
    // What was done, in a sentence for the status bar.
    void told(const QString& text);

private:
    void cmdMoveGroup_Click();

    Client& client_;
    std::unique_ptr<Ui::MoveFriendForm> ui_;
};
