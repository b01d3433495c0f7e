#include "services/forms/VCardWindows.h"

#include "contacts/Client.h"
#include "engine/Jid.h"
#include "engine/StanzaError.h"
#include "services/forms/VCardForm.h"

namespace
{

const QString windowKey = QStringLiteral("VCardWnd");

} // namespace

VCardWindows::VCardWindows(FormRegistry& registry, Client& client) : registry_(registry), client_(client) {}

void VCardWindows::OnIQ(PlugInContext& context)
{
    const auto fields = context.Stanza().IqFields();
    const QString type = fields.Type();
    if (type == u"get" || type == u"set")
        return;
    if (fields.Id() == u"JCOM_51")
        return reportSaving(context.Stanza());
    // A server may leave out the sender of the account's own card (RFC 6120, 8.1.2.1).
    const QString from = fields.From();
    auto& window = windowOf(from.isEmpty() ? client_.ownBareJid() : jid::bare(from));
    window.WriteVCard(context);
    window.present();
}

VCardForm& VCardWindows::windowOf(const QString& bareJid)
{
    auto& bag = client_.Core->PluginManager->sessions().session(bareJid)->Properties();
    auto* window = qobject_cast<VCardForm*>(bag.Item(windowKey));
    if (!window) {
        window = new VCardForm(registry_, client_);
        window->keepIn(bag, windowKey);
    }
    window->setPeer(bareJid);
    return *window;
}

void VCardWindows::reportSaving(const Stanza& stanza)
{
    if (stanza.IqFields().Type() != u"error")
        return;
    client_.desktop.boxes->exclamation(
        tr("VCard"), tr("The card could not be saved: %1").arg(StanzaError::of(stanza.root()).sentence()));
}
