#pragma once

#include "engine/ApplicationPlugIn.h"
#include "services/SearchStanzas.h"

#include <QWidget>

#include <memory>

namespace Ui
{
class SearchUsrCtrl;
}
class AnswerWait;
class Stanza;
struct Client;

// The search in one directory of people (jabber:iq:search, XEP-0055): the fields come from the directory, and
// so do the columns of what it found.
class SearchUsrCtrl : public QWidget, public ApplicationPlugIn
{
    Q_OBJECT

public:
    explicit SearchUsrCtrl(QWidget* parent = nullptr);
    ~SearchUsrCtrl() override;
    // To be called once; the client must outlive the control.
    void setClient(const Client& client);

    ApplicationPlugIn* Myapplicationplugin() { return this; }
    // The address in the selected row; empty for none.
    QString SelectedJID;

    // The highest index of a field, 0 for no field, and a field of an index between 1 and that.
    int FieldCount() const;
    QString GetFieldName(int index) const;
    QString GetFieldValue(int index) const;

    // Shows that an answer is waited for.
    void StartWaiting();
    // Empties the control for a directory whose form has been asked for, and waits.
    void expectForm(const QString& directory);
    // The search has been sent; waits for what it finds.
    void expectResults();
    // Whose form is shown or waited for.
    QString directory() const { return directory_; }
    // A line of the control's own; empty takes it away.
    void showState(const QString& text);

    void OnIQ(PlugInContext& context) override;

signals:
    // The directory has answered how it is searched.
    void formCame();
    // SelectedJID has changed.
    void chosen();
    // The selected row is to be added: a double click, Enter, or the menu.
    void addRequested();
    void messageRequested(const QString& jid);

private:
    void stopWaiting();
    void showForm(const Stanza& answer);
    void shareRoom();
    void showResults(const Stanza& answer);
    bool isFromDirectory(const Stanza& answer) const;

    std::unique_ptr<Ui::SearchUsrCtrl> ui_;
    const Client* client_ = nullptr;
    AnswerWait* wait_ = nullptr;
    QString directory_;
    bool expectsForm_ = false;
    int searches_ = 0; // without an answer
};
