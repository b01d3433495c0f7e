#include "session/forms/TrayMenus.h"

TrayMenus::TrayMenus(QObject* parent) : QObject(parent), menu_(std::make_unique<QMenu>())
{
    menu_->setObjectName(QStringLiteral("TrayMenus"));
    auto* status = menu_->addMenu(tr("Status"));
    status->setObjectName(QStringLiteral("mnuTrayStatus"));
    const std::pair<const char*, QString> entries[] = {
        {"mnuTrayStatusAv", tr("Available")},      {"mnuTrayStatusAway", tr("Away")},
        {"mnuTrayStatusXA", tr("Extended away")},  {"mnuTrayStatusDND", tr("Do not disturb")},
        {"mnuTrayStatusFFC", tr("Free for Chat")},
    };
    for (const auto& [name, caption] : entries) {
        auto* action = add(status, name, caption);
        action->setCheckable(true);
        const int index = static_cast<int>(statuses_.size());
        statuses_ += action;
        connect(action, &QAction::triggered, this, [this, action, index](bool checked) {
            action->setChecked(!checked); // the command decides what is checked
            emit statusChosen(index);
        });
    }
    menu_->addSeparator()->setObjectName(QStringLiteral("mnuTraySep1"));
    connect_ = add(menu_.get(), "mnuTrayConnect", tr("Connect..."));
    menu_->addSeparator()->setObjectName(QStringLiteral("mnuTraySep2"));
    restore_ = add(menu_.get(), "mnuTrayRestore", tr("Restore"));
    minimize_ = add(menu_.get(), "mnuTrayMinimize", tr("Minimize"));
    menu_->addSeparator()->setObjectName(QStringLiteral("mnuTraySep3"));
    auto* exit = add(menu_.get(), "mnutrayExit", tr("Exit"));
    setMinimized(false);
    connect(connect_, &QAction::triggered, this, &TrayMenus::connectChosen);
    connect(restore_, &QAction::triggered, this, &TrayMenus::restoreChosen);
    connect(minimize_, &QAction::triggered, this, &TrayMenus::minimizeChosen);
    connect(exit, &QAction::triggered, this, &TrayMenus::exitChosen);
}

QAction* TrayMenus::add(QMenu* menu, const char* name, const QString& caption)
{
    auto* action = menu->addAction(caption);
    action->setObjectName(QLatin1String(name));
    return action;
}

void TrayMenus::addConversations(std::unique_ptr<QMenu> menu)
{
    menu_->insertMenu(menu_->actions().first(), menu.get());
    conversations_ = std::move(menu);
}

void TrayMenus::setConnected(bool connected)
{
    connect_->setText(connected ? tr("Disconnect...") : tr("Connect..."));
}

void TrayMenus::setMinimized(bool minimized)
{
    restore_->setVisible(minimized);
    minimize_->setVisible(!minimized);
}

void TrayMenus::checkStatus(int index)
{
    for (int i = 0; i < statuses_.size(); ++i)
        statuses_[i]->setChecked(i == index);
}
