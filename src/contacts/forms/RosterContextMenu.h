#pragma once

#include "contacts/ContextMenuRules.h"

#include <QMenu>

// The menu of the contact tree, mnuContext.
class RosterContextMenu : public QMenu
{
    Q_OBJECT

public:
    explicit RosterContextMenu(QWidget* parent);

    // Enables and disables the entries; those that the state leaves open stay as they are.
    void apply(const ContextState& state);

signals:
    void chosen(ContextEntry entry);

private:
    std::array<QAction*, 11> entries_{};
};
