#include "messaging/forms/ConversationMenu.h"

#include "messaging/forms/ChatWindow.h"
#include "messaging/forms/ConversationForm.h"

ConversationMenu::ConversationMenu(ChatWindow& hub, QWidget* parent)
    : QMenu(tr("C&onversations"), parent), hub_(hub)
{
    setObjectName(QStringLiteral("mnuConversations"));
    fill();
    connect(this, &QMenu::aboutToShow, this, &ConversationMenu::fill);
}

void ConversationMenu::fill()
{
    clear();
    for (auto* window : hub_.conversations())
        add(*window);
    if (isEmpty())
        addAction(tr("No conversation"))->setEnabled(false);
}

void ConversationMenu::add(ConversationForm& window)
{
    const bool unread = hub_.unread.peers().contains(window.peer);
    const QString title = window.windowTitle().replace(u'&', QStringLiteral("&&"));
    auto* entry = addAction(unread ? tr("%1 (unread)").arg(title) : title, &window, &Form::bringUp);
    QFont font = entry->font();
    font.setBold(unread);
    entry->setFont(font);
}
