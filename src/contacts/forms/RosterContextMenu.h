#pragma once

#include "contacts/ContextMenuRules.h"

#include <QMenu>

class Roster;

// The menu of the contact tree, mnuContext.
class RosterContextMenu : public QMenu
{
    Q_OBJECT

public:
    explicit RosterContextMenu(Roster& roster);

    // Enables and disables the entries; those that the state leaves open stay as they are.
    void apply(const ContextState& state);

private:
    void act(ContextEntry entry);

    Roster& roster_;
    std::array<QAction*, 11> entries_{};
};
