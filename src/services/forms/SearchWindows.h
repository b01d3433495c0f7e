#pragma once

#include "services/ContactAdding.h"

#include <QObject>

class FormRegistry;
class MessageWindows;
class PlugInContext;
class SearchAddForm;
class SearchForm;

// The two windows of the search for people, and the answers that are for them. An answer for a window that
// the person has closed is dropped.
class SearchWindows : public QObject
{
    Q_OBJECT

public:
    // All must outlive the object, and the object its windows.
    SearchWindows(FormRegistry& registry, Client& client, MessageWindows& messages);

    // The person wants to find people; the server has been asked for its services.
    void show();
    // Asks a directory how it is searched, and shows its form.
    void ask(const QString& directory);

    void OnServices(PlugInContext& context);
    void OnServerCheck(PlugInContext& context);
    void OnSearch(PlugInContext& context);

private:
    SearchAddForm* addForm() const;

    FormRegistry& registry_;
    Client& client_;
    MessageWindows& messages_;
    ContactAdding adding_;
};
