#include "services/forms/SearchWindows.h"

#include "messaging/forms/MessageWindows.h"
#include "services/forms/SearchAddForm.h"
#include "services/forms/SearchForm.h"

namespace
{

const QString addName = QStringLiteral("SearchAddForm");
const QString searchName = QStringLiteral("SearchForm");

} // namespace

SearchWindows::SearchWindows(FormRegistry& registry, Client& client, MessageWindows& messages)
    : registry_(registry), client_(client), messages_(messages),
      adding_(client, [&messages](const QString& from, const QString& body, const QString& subject) {
          messages.writeNotice(from, body, subject);
      })
{
}

SearchAddForm* SearchWindows::addForm() const
{
    return qobject_cast<SearchAddForm*>(registry_.find(addName));
}

void SearchWindows::show()
{
    auto& form = registry_.single<SearchAddForm>(addName, [this] {
        auto* made = new SearchAddForm(registry_, client_, adding_);
        connect(made, &SearchAddForm::searchRequested, this, &SearchWindows::ask);
        return made;
    });
    form.expectDirectories();
    form.bringUp();
}

void SearchWindows::ask(const QString& directory)
{
    auto& form = registry_.single<SearchForm>(searchName, [this] {
        auto* made = new SearchForm(registry_, client_, adding_);
        connect(made, &SearchForm::messageRequested, &messages_,
                [this](const QString& jid) { messages_.openConversation(jid, true); });
        return made;
    });
    form.ask(directory);
}

// It came up with the wish already: whoever closed it does not want it again.
void SearchWindows::OnServices(PlugInContext& context)
{
    if (auto* form = addForm())
        form->takeDirectories(context);
}

void SearchWindows::OnServerCheck(PlugInContext& context)
{
    if (auto* form = addForm())
        form->takeServerCheck(context);
}

void SearchWindows::OnSearch(PlugInContext& context)
{
    if (auto* form = qobject_cast<SearchForm*>(registry_.find(searchName)))
        form->search().OnIQ(context);
}
