#pragma once

#include "desktop/forms/Form.h"

#include <memory>

namespace Ui
{
class SearchForm;
}
class ApplicationPlugIn;
class ContactAdding;
struct Client;

// The free search in a directory of people, and adding whom it found.
class SearchForm : public Form
{
    Q_OBJECT

public:
    // All must outlive the form.
    SearchForm(FormRegistry& registry, Client& client, ContactAdding& adding);
    ~SearchForm() override;

    // Takes the directory's answers.
    ApplicationPlugIn& search() const;
    // Asks a directory how it is searched, and shows the form.
    void ask(const QString& directory);

public slots:
    void CmdSearch_Click();
    void cmdAdd_Click();

signals:
    void messageRequested(const QString& jid);

protected:
    void unload() override;

private:
    std::unique_ptr<Ui::SearchForm> ui_;
    Client& client_;
    ContactAdding& adding_;
};
