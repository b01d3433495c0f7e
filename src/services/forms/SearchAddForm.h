#pragma once

#include "desktop/forms/Form.h"

#include <memory>

namespace Ui
{
class SearchAddForm;
}
class AnswerWait;
class ContactAdding;
class PlugInContext;
struct Client;

// Adds a contact whose address is known, on a network of the person's choice, and lists the directories in
// which others can be searched.
class SearchAddForm : public Form
{
    Q_OBJECT

public:
    // All must outlive the form.
    SearchAddForm(FormRegistry& registry, Client& client, ContactAdding& adding);
    ~SearchAddForm() override;

    // The server has been asked for its directories.
    void expectDirectories();
    // An answer that names directories.
    void takeDirectories(PlugInContext& context);
    // The answer of a server that was checked, or its failure.
    void takeServerCheck(PlugInContext& context);

    // Takes over the network that is chosen. "Other Server ..." is asked for and checked; `errorText` says
    // what was wrong with the server `asked` before.
    void SetServer(const QString& errorText = {}, const QString& asked = {});
    void StartAnimation(const QString& path);
    void StopAnimation();

public slots:
    void cmdAsk_Click();
    void cmdAdd_Click();

signals:
    // A directory is to be searched.
    void searchRequested(const QString& directory);

private:
    void setUpWaits();
    void askServer(const QString& errorText, QString asked);
    void checkServer(const QString& server);
    void setChecking(bool on);
    // Ends the check; `word` says why.
    void giveUp(const QString& word);
    // Back to the network that was chosen before.
    void leaveOther();
    void Text1_KeyPress();
    void tell(const QString& text);

    std::unique_ptr<Ui::SearchAddForm> ui_;
    Client& client_;
    ContactAdding& adding_;
    AnswerWait* directories_;
    AnswerWait* check_;
    QString network_; // as chosen
    QString server_;  // of the new contact's address
    QString checked_; // the server that is being checked
};
