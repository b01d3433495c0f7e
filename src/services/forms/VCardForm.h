#pragma once

#include "desktop/forms/SessionForm.h"
#include "services/VCard.h"

#include <QString>

#include <memory>

namespace Ui
{
class VCardForm;
}
class PlugInContext;
class QLineEdit;
struct Client;

// One person's card (vcard-temp, XEP-0054): the own one to be written, another's to be read. Its Tag is the
// bare JID whose card it is.
class VCardForm : public SessionForm
{
    Q_OBJECT

public:
    VCardForm(FormRegistry& registry, Client& client);
    ~VCardForm() override;

    // Whose card it is.
    void setPeer(const QString& bareJid);
    // Fills the fields from the context's stanza and says so when it brought no card. An error leaves them as
    // they are.
    void WriteVCard(const PlugInContext& context);
    // Shows the window ready for the own card or for another's; one that is up comes to the front.
    void present();

public slots:
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void cmdOK_Click();
    void Label5_Click();
    void Label7_Click();

private:
    VCard card() const;
    QLineEdit* field(const QString& control) const;
    void setOwn(bool own);
    // Sends the card. False, after a box, when it wasn't sent; `incomplete` is the text for empty required
    // fields.
    bool save(const QString& incomplete);
    void showMissing(const QStringList& controls, const QString& text);
    // A line of the window's own; empty takes it away.
    void showState(const QString& text);
    void showLinks();
    void openLink(const QString& link);

    std::unique_ptr<Ui::VCardForm> ui_;
    Client& client_;
};
