#pragma once

#include "engine/ApplicationPlugIn.h"
#include "services/GatewayForm.h"

#include <QWidget>

#include <memory>
#include <vector>

class InstructionArea;
class QLabel;
class QLineEdit;
struct Client;

namespace Ui
{
class TransportUsrCtrl;
}

// The page of one gateway: asks it for its form, shows that, and registers or takes the registration back.
class TransportUsrCtrl : public QWidget, public ApplicationPlugIn
{
    Q_OBJECT

public:
    // The client must outlive the panel.
    explicit TransportUsrCtrl(Client& client);
    ~TransportUsrCtrl() override;

    ApplicationPlugIn* Myapplicationplugin() { return this; }
    // The gateway that the panel shows.
    QString CurrentTransportJID() const { return jid_; }
    void setCurrentTransportJID(const QString& jid) { jid_ = jid; }

    // Prepares the panel for the form of this gateway; GetRegister is to follow.
    void AssembleObject(const QString& jid);
    // Each sends its request; where it can't be sent the wait ends with a word.
    void GetRegister(const QString& jid);
    void SetRegister(const QString& jid);
    void DeleteRegister(const QString& jid);
    // A request is under way.
    bool isWaiting() const { return waiting_; }

    // An answer of the gateway's.
    void OnIQ(PlugInContext& context) override;
    // The gateway asks to see the presence, so it may have taken a registration.
    void subscribed();
    // Nothing that was asked will be answered.
    void sessionEnded();

protected:
    // Enter in a field registers, and Escape gives a wait up.
    void keyPressEvent(QKeyEvent* event) override;

private:
    // What a wait takes away, and gives back where nothing came of it.
    struct Look {
        bool form = false;
        bool subscribe = false;
        bool remove = false;
    };
    // A label, and the field that it names unless it only says something.
    struct Row {
        GatewayForm::Field asked;
        std::unique_ptr<QLabel> label;
        std::unique_ptr<QLineEdit> edit;
        QString shown; // at first

        bool isTyped() const;
    };

    void cmdRegister_Click();
    void cmdremove_Click();
    void cmdUndo_Click();
    void refused(const PlugInContext& context);
    void removed();
    // Asks for the form once more; `news` stands beside it.
    void askAgain(const QString& news = {});
    void showForm(const GatewayForm& form);
    // One field of the answer. `kept` are the rows of before: what was typed there stays.
    void AddRegistrationField(const GatewayForm::Field& field, std::vector<Row>& kept);
    void addRegisteredLine();
    QLabel* addLabel(const QString& text);
    QString wordAbout(const GatewayForm& form) const;

    bool send(const QString& request);
    void wait(const QString& status);
    void StartGatewayAnimation(const QString& path);
    void StopGatewayAnimation();
    void endWait(const Look& look);
    Look look() const;
    void show(const Look& look);
    void say(const QString& word);

    Client& client_;
    std::unique_ptr<Ui::TransportUsrCtrl> ui_;
    InstructionArea* TrDescription;
    QString jid_;
    QString key_; // of the gateway's last form
    std::vector<Row> rows_;
    bool waiting_ = false;
    bool fetching_ = false; // the wait is for the form
    Look before_;           // the wait
};
