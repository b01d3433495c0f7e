#include "session/forms/ConnectionUi.h"

#include "contacts/Client.h"
#include "session/forms/CertificateForm.h"
#include "session/forms/LoggingInForm.h"
#include "session/forms/SessionWindows.h"
#include "settings/SettingsStore.h"

ConnectionUi::ConnectionUi(Client& client, SessionWindows& windows, SettingsStore& store)
    : client_(client), windows_(windows), store_(store)
{
}

void ConnectionUi::connectionProgress(const QString& text)
{
    reason_ = text;
    windows_.tellProgress(text);
}

CertificateAnswer ConnectionUi::askCertificate(const CertificateInfo& info)
{
    const SameSession same(client_);
    const QPointer form = new CertificateForm(info, windows_.progressIfLoaded());
    question_ = form;
    form->exec();
    const auto answer = form && same ? form->answer() : CertificateAnswer::Refuse;
    delete form;
    return answer;
}

void ConnectionUi::withdraw()
{
    if (question_)
        question_->reject();
}

bool ConnectionUi::allowPlainPassword(const QString& server)
{
    if (store_.plainPasswordAllowed(server))
        return true;
    const SameSession same(client_);
    const auto answer =
        client_.desktop.boxes->show(tr("Security question"),
                                    tr("The connection to %1 is not encrypted, and the server wants the "
                                       "password in clear: others on the way "
                                       "could read it. Send it all the same?")
                                        .arg(server),
                                    MessageBoxes::Icon::Exclamation, MessageBoxes::Buttons::YesNo);
    if (answer != MessageBoxes::Answer::Yes || !same)
        return false;
    store_.allowPlainPassword(server);
    return true;
}

QByteArray ConnectionUi::pinnedCertificate(const QString& server)
{
    return store_.pinnedCertificate(server);
}

void ConnectionUi::pinCertificate(const QString& server, const QByteArray& sha256)
{
    store_.pinCertificate(server, sha256);
}
