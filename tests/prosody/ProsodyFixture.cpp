#include "prosody/ProsodyFixture.h"

#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "session/forms/SignInForm.h"

#include <QPlainTextEdit>
#include <QTest>

namespace
{

constexpr int patienceMs = 20'000;

}

ProsodyFixture::ProsodyFixture(ProsodyServer& to)
    : server(to), live([&to](SettingsStore& store) { store.pinCertificate("localhost", to.fingerprint()); })
{
}

bool ProsodyFixture::signIn()
{
    live.signIn(server.address());
    return QTest::qWaitFor([this] { return live.isOnline(); }, patienceMs);
}

bool ProsodyFixture::signOut()
{
    ui::choose(live.rosterForm(), "mRosterTDiscon");
    return QTest::qWaitFor([this] {
        return !live.client.isConnected() && live.ui->windows.session.signIn().isVisible() &&
               !live.rosterForm();
    });
}

bool ProsodyFixture::isOnline(SlixmppPeer& peer)
{
    const bool online = QTest::qWaitFor([&peer] { return peer.isOnline(); }, patienceMs);
    if (!online)
        qWarning("%s", peer.problem().constData());
    return online;
}

Form* ProsodyFixture::open(const QString& jid)
{
    emit live.rosterForm()->Roster1->openConversation(jid);
    Form* window = nullptr;
    (void)QTest::qWaitFor([&] { return (window = visible("MessageForm")) != nullptr; });
    return window;
}

Form* ProsodyFixture::visible(const char* name)
{
    for (auto* form : live.registry.loaded()) {
        if (form->objectName() == QLatin1String(name) && form->isVisible())
            return form;
    }
    return nullptr;
}

QString ProsodyFixture::transcript(const Form& window, const char* name)
{
    return ui::find<QPlainTextEdit>(&window, name)->toPlainText();
}

void ProsodyFixture::typeInto(const Form& window, const QString& text)
{
    auto* entry = ui::find<QPlainTextEdit>(&window, "txtMsg");
    entry->insertPlainText(text); // an emoji is no key
}

bool ProsodyFixture::seesPeer() const
{
    const auto* record = live.client.MyRoster.record(peer);
    return record && record->Online;
}

const TreeNode* ProsodyFixture::row(const QString& jid) const
{
    auto& tree = live.rosterForm()->Roster1->tree();
    return tree.Item(tree.NodeIndexOfKey(jid));
}
