#include "session/forms/ConnectionUi.h"

#include "contacts/Client.h"
#include "session/forms/CertificateForm.h"
#include "session/forms/LoggingInForm.h"
#include "session/forms/SessionWindows.h"
#include "settings/SettingsStore.h"

namespace
{

QString words(const Safety& safety)
{
    const QString way = !safety.encrypted ? ConnectionUi::tr("a connection that is not encrypted")
                        : safety.verified
                            ? ConnectionUi::tr("an encrypted connection, its certificate verified")
                            : ConnectionUi::tr("an encrypted connection");
    switch (safety.proof) {
    case Proof::None:
        return way;
    case Proof::Plain:
        return ConnectionUi::tr("%1; the password itself is sent").arg(way);
    case Proof::Digest:
        return ConnectionUi::tr("%1; only a digest of the password is sent").arg(way);
    case Proof::ScramSha1:
        return ConnectionUi::tr("%1; only a proof of the password is sent (SCRAM-SHA-1)").arg(way);
    case Proof::ScramSha256:
        break;
    }
    return ConnectionUi::tr("%1; only a proof of the password is sent (SCRAM-SHA-256)").arg(way);
}

} // namespace

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

std::optional<Safety> ConnectionUi::lastSafety(const QString& account)
{
    return store_.lastSafety(account);
}

void ConnectionUi::keepSafety(const QString& account, const Safety& reached)
{
    store_.keepSafety(account, reached);
}

bool ConnectionUi::allowLess(const QString& account, const Safety& before, const Safety& now)
{
    const SameSession same(client_);
    const auto answer = client_.desktop.boxes->show(
        tr("Security question"),
        tr("Signing in as %1 is less safe now than it was.\n\nBefore: %2.\nNow: %3.\n\n"
           "The server may have changed, or somebody on the way wants to read along. Sign in all the same?")
            .arg(account, words(before), words(now)),
        MessageBoxes::Icon::Exclamation, MessageBoxes::Buttons::YesNo);
    return answer == MessageBoxes::Answer::Yes && same;
}
