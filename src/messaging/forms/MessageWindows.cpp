#include "messaging/forms/MessageWindows.h"

#include "contacts/Client.h"
#include "desktop/forms/Form.h"
#include "messaging/forms/HeadLineForm.h"

MessageWindows::MessageWindows(FormRegistry& registry, Client& client)
    : hub(registry, client), registry_(registry), client_(client), requests_(registry, client)
{
    hub.notices = [this]() -> HeadLineForm& { return notices(); };
}

HeadLineForm& MessageWindows::notices()
{
    return registry_.single<HeadLineForm>(QStringLiteral("HeadLineForm"), [this] {
        auto* form = new HeadLineForm(registry_, client_);
        connect(form, &HeadLineForm::connectionLost, this, &MessageWindows::connectionLost);
        return form;
    });
}

void MessageWindows::showNotices()
{
    notices().showAtPlace();
    notices().bringUp();
}

void MessageWindows::OnMessage(PlugInContext& context)
{
    if (client_.settings.SoundOnNewMessage)
        client_.desktop.sounds->PlaySoundFile(client_.settings.SoundOnNewMessageFile, false);
    notices().OnMessage(context);
    notices().showAtPlace();
}

void MessageWindows::OnPresence(PlugInContext& context)
{
    notices().OnPresence(context);
}

void MessageWindows::writeNotice(const QString& from, const QString& body, const QString& subject)
{
    notices().WriteMessage(from, body, subject);
    notices().showAtPlace();
}

void MessageWindows::openConversation(const QString& jid, bool trick)
{
    if (trick)
        hub.IsTrick = true;
    hub.SendMessage(jid);
}
