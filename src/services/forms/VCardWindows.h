#pragma once

#include "engine/ApplicationPlugIn.h"

#include <QCoreApplication>
#include <QString>

class FormRegistry;
class PlugInContext;
class Stanza;
class VCardForm;
struct Client;

// Takes every iq with a vcard-temp child (XEP-0054) and keeps one window a peer, in the bag of the peer's
// session.
class VCardWindows : public ApplicationPlugIn
{
    Q_DECLARE_TR_FUNCTIONS(VCardWindows)

public:
    // Both must outlive the object.
    VCardWindows(FormRegistry& registry, Client& client);

    ApplicationPlugIn* Myapplicationplugin() { return this; }
    // Notes whose card is asked for; sends nothing.
    void RequestVCard(const QString& JID) { requested_ = JID; }
    const QString& requested() const { return requested_; }

    // Fills and shows the peer's window. Questions of others open none. That the server refused to save the
    // own card is told in a box.
    void OnIQ(PlugInContext& context) override;

private:
    VCardForm& windowOf(const QString& bareJid);
    void reportSaving(const Stanza& stanza);

    FormRegistry& registry_;
    Client& client_;
    QString requested_;
};
