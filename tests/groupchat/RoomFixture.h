#pragma once

#include "groupchat/forms/GroupchatWindowForm.h"
#include "groupchat/forms/InviteForm.h"
#include "groupchat/forms/JoinConferenceForm.h"
#include "messaging/forms/MessageEdit.h"
#include "messaging/forms/MessageForm.h"
#include "messaging/forms/TranscriptView.h"
#include "session/SessionFixture.h"

#include <QTextDocumentFragment>

inline const QString verse = "verse@rooms.montague.example";
inline const QString me = verse + "/0a1b";
inline const QString available = "<presence to=\"" + verse + "\"/>";
inline const QString nickSet =
    "<iq to=\"" + verse +
    "\" type=\"set\" id=\"VRX_CONF_DATA\"><query xmlns=\"jabber:iq:conference\"><nick>%1</nick>"
    "</query></iq>";
inline const QString gone = "<presence to=\"" + verse + "\" type=\"unavailable\"/>";

inline QString said(const QString& inner)
{
    return "<message to=\"" + verse + "\" type=\"GroupChat\">" + inner + "</message>";
}

// What a tool tip shows, which takes markup.
inline QString shownTip(const QString& tip)
{
    return Qt::mightBeRichText(tip) ? QTextDocumentFragment::fromHtml(tip).toPlainText() : tip;
}

// A signed-in client, and a room of its server as the wire shows it.
struct RoomClient : SignedInClient {
    RoomClient()
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
        takeSent();
    }

    GroupchatWindowForm* room() const
    {
        return qobject_cast<GroupchatWindowForm*>(form("GroupchatWindowForm"));
    }
    Form* join() const { return form("JoinConferenceForm"); }

    void signInAgain()
    {
        streamUp();
        inject("<iq type='result'><query xmlns='jabber:iq:roster'/></iq>");
        inject("<iq type='result'><query xmlns='jabber:iq:agents'/></iq>");
    }
    void conference(const QString& id, const QString& inner, const QString& type = "result")
    {
        inject(QString("<iq type=\"%1\" id=\"%2\" from=\"%3\"><query xmlns=\"jabber:iq:conference\"/>%4</iq>")
                   .arg(type, id, verse, inner));
    }
    void browsed(const QString& id, const QString& from, const QString& inner, const QString& type = "result")
    {
        inject(
            QString("<iq type=\"%1\" id=\"%2\" from=\"%3\"><query xmlns=\"jabber:iq:browse\">%4</query></iq>")
                .arg(type, id, from, inner));
    }
    // The room tells who is in it.
    void users(const QString& inner) { browsed("", verse, inner, "set"); }
    void presence(const QString& from, const QString& inner, const QString& type = {})
    {
        inject(QString("<presence from=\"%1\"%2>%3</presence>")
                   .arg(from, type.isEmpty() ? QString() : QString(" type=\"%1\"").arg(type), inner));
    }
    void says(const QString& from, const QString& inner)
    {
        inject(QString("<message from=\"%1\" type=\"groupchat\">%2</message>").arg(from, inner));
    }
    // The room is entered as "rom", and Will is in it.
    GroupchatWindowForm& enter()
    {
        conference("VRX_CONF?", "<name>Verse &amp; prose</name><nick/>");
        conference("VRX_CONF_DATA", QString("<id>%1</id><nick>rom</nick>").arg(me));
        users("<user jid=\"" + verse + "/will\" name=\"Will\"/>");
        takeSent();
        return *room();
    }

    QString history() const { return ui::find<TranscriptView>(room(), "vbalRichEdit1")->transcriptText(); }
    QString status() const { return ui::find<QLabel>(room(), "StatusBar1Panel1")->text(); }
    QString mainStatus() const { return ui::find<QLabel>(rosterForm(), "StatusBar1Panel1")->text(); }
    MessageEdit& entry() const { return *ui::find<MessageEdit>(room(), "RichTextBox2"); }
    QStringList nicks() const
    {
        QStringList names;
        for (int place = 1; place <= room()->occupants.Count(); ++place)
            names += room()->occupants.node(place)->Text;
        return names;
    }
};
