#include "services/forms/BrowseUsrCtrl.h"

#include "contacts/Client.h"
#include "contacts/RosterStanzas.h"
#include "engine/StanzaError.h"
#include "services/forms/BrowseList.h"

#include <QVBoxLayout>

namespace
{

constexpr qsizetype mostAsked = 20; // no server has more services of a kind

} // namespace

BrowseUsrCtrl::BrowseUsrCtrl(QWidget* parent) : QWidget(parent), BrowseResult(new BrowseList(this))
{
    BrowseResult->setObjectName(QStringLiteral("BrowseResult"));
    BrowseResult->setAccessibleName(tr("Results"));
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins({});
    rows->addWidget(BrowseResult);
    setFocusProxy(BrowseResult);
    connect(BrowseResult, &QListWidget::itemSelectionChanged, this, &BrowseUsrCtrl::choose);
    connect(BrowseResult, &QListWidget::itemClicked, this, &BrowseUsrCtrl::choose);
    connect(BrowseResult, &BrowseList::opened, this, &BrowseUsrCtrl::open);
}

void BrowseUsrCtrl::setHint(const QString& text)
{
    BrowseResult->setHint(text);
}

void BrowseUsrCtrl::ForceInsertion(const QString& jid)
{
    BrowseResult->addRows({{jid, jid}});
    emit directoryFound();
}

void BrowseUsrCtrl::OnIQ(PlugInContext& context)
{
    const auto& answer = context.Stanza();
    const QString id = answer.IqFields().Id();
    const bool ofRooms = id == u"VRX_CHATROOM?" || id == u"VRX_GET_CHATROOM";
    if (ofRooms && tellRefusal(answer))
        return;
    if (id == u"VRX_CHATROOM?")
        findRoomServices(context);
    else if (id == u"VRX_GET_CHATROOM")
        listRooms(answer);
    else if (id == u"VRX_GET_SERVICE")
        findDirectories(context);
    else if (id == u"VRX_browser")
        listDirectories(answer);
}

// Every service is asked, and the last one's rooms are shown.
void BrowseUsrCtrl::findRoomServices(const PlugInContext& context)
{
    const QStringList found[] = {browseanswers::roomServices(context.Stanza(), QStringLiteral("private")),
                                 browseanswers::roomServices(context.Stanza(), QStringLiteral("public"))};
    for (const bool kind : {false, true})
        lastService_[kind] = found[kind].value(found[kind].size() - 1);
    listsPublic_ = publicRooms;
    const auto& services = found[publicRooms];
    if (services.isEmpty())
        setHint(publicRooms ? tr("This server offers no public rooms.")
                            : tr("This server offers no private rooms."));
    for (const auto& jid : services.mid(0, mostAsked)) {
        emit roomServiceFound(jid);
        SendStanza(context, stanzas::browse(QStringLiteral("VRX_GET_CHATROOM"), jid));
    }
}

void BrowseUsrCtrl::listRooms(const Stanza& answer)
{
    BrowseResult->clear();
    BrowseResult->addRows(browseanswers::rooms(answer));
    setHint(tr("There is no room yet. Tick \"New\" to make one."));
}

bool BrowseUsrCtrl::tellRefusal(const Stanza& answer)
{
    if (answer.IqFields().Type() != u"error")
        return false;
    setHint(tr("%1 tells no rooms: %2").arg(answer.From(), StanzaError::of(answer.root()).sentence()));
    return true;
}

// A room that is made now lies on the service of the kind that is chosen.
void BrowseUsrCtrl::forgetOtherKind()
{
    if (!lastService_[publicRooms].isEmpty())
        emit roomServiceFound(lastService_[publicRooms]);
    if (listsPublic_ == publicRooms)
        return;
    BrowseResult->clear();
    setHint(tr("Press \"Search\" to see the rooms."));
    choose();
}

void BrowseUsrCtrl::findDirectories(const PlugInContext& context)
{
    if (context.Stanza().IqFields().Type() == u"error")
        return useKnownDirectory(context);
    const auto found = browseanswers::directories(context.Stanza(), client_->Gateway().Server());
    BrowseResult->addRows(found.rows);
    if (!found.rows.isEmpty())
        emit directoryFound();
    else if (found.toBrowse.isEmpty())
        setHint(noDirectory());
    for (const auto& jid : found.toBrowse.mid(0, mostAsked))
        SendStanza(context, stanzas::browse(QStringLiteral("VRX_browser"), jid));
}

void BrowseUsrCtrl::listDirectories(const Stanza& answer)
{
    BrowseResult->addRows(browseanswers::directoryServices(answer, client_->Gateway().Server()));
    setHint(noDirectory());
}

// A server that can't be browsed may have named its directory among its services.
void BrowseUsrCtrl::useKnownDirectory(const PlugInContext& context)
{
    const QString server = client_->Gateway().Server();
    const QString directory = server + QStringLiteral("/juds");
    const QString users = QStringLiteral("users.") + server;
    if (client_->MyAgents.JIDExists(directory))
        SendStanza(context, stanzas::browse(QStringLiteral("VRX_browser"), directory));
    else if (client_->MyAgents.JIDExists(users))
        ForceInsertion(users);
    else
        setHint(noDirectory());
}

QString BrowseUsrCtrl::noDirectory()
{
    return tr("This server names no directory of people.");
}

void BrowseUsrCtrl::choose()
{
    SelectedJID = BrowseResult->selectedJid();
    emit chosen(!SelectedJID.isEmpty());
}

void BrowseUsrCtrl::open()
{
    SelectedJID = BrowseResult->selectedJid();
    emit opened();
    if (MyType == u"CHATROOM")
        SelectedJID.clear();
}
