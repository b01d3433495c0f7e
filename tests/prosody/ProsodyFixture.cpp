#include "prosody/ProsodyFixture.h"

#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "session/forms/SignInForm.h"

static constexpr int patienceMs = 20'000;

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

bool ProsodyFixture::startJuliet()
{
    juliet = std::make_unique<SlixmppPeer>(server, "juliet", "rose");
    const bool online = QTest::qWaitFor([this] { return juliet->isOnline(); }, patienceMs);
    if (!online)
        qWarning("%s", juliet->problem().constData());
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
