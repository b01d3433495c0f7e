#include "contacts/forms/RosterContextMenu.h"

#include "desktop/forms/ImageList.h"

namespace
{

struct Row {
    ContextEntry entry;
    const char* name;
    const char* caption;
    const char* image;
    bool separatorBefore;
};

constexpr Row rows[] = {
    {ContextEntry::AddFriend, "mnuContextAddFriend", QT_TR_NOOP("&Search for Contact"), "Add", false},
    {ContextEntry::AddGroup, "mnuContextAddGroup", QT_TR_NOOP("&Add to Group"), "ClosedFolder2", false},
    {ContextEntry::GateLogin, "mnuContextGateLogin", QT_TR_NOOP("Gateway &Login"), "ServerON", true},
    {ContextEntry::LogoffGate, "mnuContextLogoffGate", QT_TR_NOOP("&Disconnect Gateway"), "ServerOFF", false},
    {ContextEntry::RemoveFriend, "mnuContextRemoveFriend", QT_TR_NOOP("&Remove Contact"), "Del", true},
    {ContextEntry::RenameFriend, "mnuContextRenameFriend", QT_TR_NOOP("Re&name Contact"), "", false},
    {ContextEntry::MoveFriend, "mnuContextMoveFriend", QT_TR_NOOP("&Move Contact"), "", false},
    {ContextEntry::SendMessage, "mnuContextSendMessage", QT_TR_NOOP("Send M&essage"), "Mail", false},
    {ContextEntry::History, "mnuContextHistory", QT_TR_NOOP("Show &history"), "", false},
    {ContextEntry::ShowVCard, "mnuContextShowVCard", QT_TR_NOOP("Show the &vCard"), "", false},
    {ContextEntry::NotPres, "mnuContextNotPres", QT_TR_NOOP("Notify &Presence"), "", true},
};

} // namespace

RosterContextMenu::RosterContextMenu(QWidget* parent) : QMenu(parent)
{
    setObjectName(QStringLiteral("mnuContext"));
    for (const Row& row : rows) {
        if (row.separatorBefore)
            addSeparator();
        QAction* action = addAction(ImageList::icon(QString::fromLatin1(row.image)), tr(row.caption));
        action->setObjectName(QString::fromLatin1(row.name));
        action->setEnabled(false);
        connect(action, &QAction::triggered, this, [this, entry = row.entry] { emit chosen(entry); });
        entries_[static_cast<std::size_t>(row.entry)] = action;
    }
}

void RosterContextMenu::apply(const ContextState& state)
{
    for (std::size_t entry = 0; entry < state.size(); ++entry) {
        if (state[entry])
            entries_[entry]->setEnabled(*state[entry]);
    }
}
