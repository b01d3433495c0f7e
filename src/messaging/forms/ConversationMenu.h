#pragma once

#include <QMenu>

class ChatWindow;
class ConversationForm;

// The conversations of this session, those that were closed or came as an icon too, so that each is found
// without a task bar. An entry brings its window up.
class ConversationMenu : public QMenu
{
    Q_OBJECT

public:
    // The hub must outlive the menu.
    ConversationMenu(ChatWindow& hub, QWidget* parent);

private:
    void fill();
    void add(ConversationForm& window);

    ChatWindow& hub_;
};
