#include "services/forms/VCardWindows.h"
#include "desktop/SafeLink.h"
#include "desktop/forms/Form.h"
#include "services/forms/VCardForm.h"
#include "support/FakeEngine.h"
#include "support/RecordingDesktop.h"
#include "support/Table.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

namespace
{

const QString own = "romeo@montague.example";
const QString juliet = "juliet@capulet.example";
const QString ownCard = "<N><GIVEN>Romeo</GIVEN><FAMILY>Montague</FAMILY></N><NICKNAME>rm</NICKNAME>"
                        "<EMAIL><INTERNET/><PREF/>romeo@montague.example</EMAIL>";

// The desktop's own rule, with nothing behind it.
struct SafeLinks : RecordingLinks {
    bool open(const QString& link) override { return isSafeLink(link) && RecordingLinks::open(link); }
};

} // namespace

// Cards as they arrive, and the windows that show them.
class VCardWindowsTest : public QObject
{
    Q_OBJECT
    void receive(const QString& from, const QString& children, const QString& type = "result",
                 const QString& id = "vcard_wj_3")
    {
        const QString sender = from.isEmpty() ? QString() : QString(" from=\"%1\"").arg(from);
        const QString stanza = "<iq type='%1' id='%2'%3><VCARD xmlns='vcard-temp'>%4</VCARD></iq>";
        world_->engine.inject(stanza.arg(type, id, sender, children));
    }

    // The window of the last card, or null.
    VCardForm* window() const
    {
        const auto forms = world_->registry.loaded();
        return forms.isEmpty() ? nullptr : qobject_cast<VCardForm*>(forms.last());
    }

    QString text(const char* control) const { return ui::find<QLineEdit>(window(), control)->text(); }
    struct World {
        Client client;
        RecordingDesktop desktop;
        SafeLinks links;
        FormRegistry registry;
        FakeEngine engine{client};
        VCardWindows windows{registry, client};
    };
    std::unique_ptr<World> world_;

private slots:
    void init()
    {
        world_ = std::make_unique<World>();
        world_->client.desktop = world_->desktop.desktop();
        world_->client.desktop.links = &world_->links;
        world_->engine.plugIn(&world_->windows);
    }

    void cleanup()
    {
        world_->client.Core->PluginManager->sessions().clear();
        QVERIFY(!window());
        world_->registry.deleteAllExcept(nullptr);
        world_.reset();
    }

    void showsOneWindowAPeer()
    {
        receive(juliet + "/balcony", "<NICKNAME>ju</NICKNAME><URL>http://capulet.example</URL>");
        const auto* first = window();
        QVERIFY(first->isVisible());
        receive(juliet, "<NICKNAME>juli</NICKNAME>");
        QCOMPARE(world_->registry.loaded().size(), 1);
        QCOMPARE(window(), first);
        QCOMPARE(first->Tag, juliet);
        QCOMPARE(text("nick"), "juli");
        QCOMPARE(text("persurl"), "");
        receive("nurse@capulet.example", "");
        QCOMPARE(world_->registry.loaded().size(), 2);
        QVERIFY(window() != first);
    }

    // The layout takes seconds for a few thousand marks; what is saved again stays whole.
    void whatOthersWriteIsCutToBeShown()
    {
        const QString marks(2000, QChar(0x316));
        for (const QString& from : {juliet, own}) {
            receive(from, "<NICKNAME>" + marks + "</NICKNAME>");
            QCOMPARE(text("nick").size() < 100, from == juliet);
        }
        world_->engine.inject("<iq type='error' from='" + juliet + "'><VCARD xmlns='vcard-temp'/><error>" +
                              QString(5000, 'x') + "</error></iq>");
        for (auto* form : world_->registry.loaded())
            QVERIFY(ui::find<QLabel>(form, "lblState")->text().size() < 1100);
    }

    void openButtonsAndFieldsByOwner_data()
    {
        columns<QString, bool>("from", "isOwn");
        row("a contact", juliet, false);
        row("own account", own + "/orchard", true);
        row("no sender", "", true);
        row("own name on another server", "romeo@verona.example", false);
    }
    void openButtonsAndFieldsByOwner()
    {
        const auto [from, isOwn] = fetched<QString, bool>();
        receive(from, ownCard);
        QPointer<VCardForm> form = window();
        for (const char* name : {"Command1", "Command3", "cmdOK"})
            QCOMPARE(ui::find<QPushButton>(form, name)->isVisible(), isOwn);
        QCOMPARE(ui::find<QPushButton>(form, "Command2")->isVisible(), !isOwn);
        ui::type(form, "nick", "changed");
        QCOMPARE(text("nick"), isOwn ? "changed" : "rm");
        QTest::keyClick(form, Qt::Key_Escape);
        QVERIFY(!window());
        QCOMPARE(world_->engine.takeSent(), QStringList());
        QTRY_VERIFY(!form);
    }

    void makesAClosedWindowAnew()
    {
        receive(juliet, "<NICKNAME>ju</NICKNAME>");
        const QPointer<VCardForm> first = window();
        ui::click(first, "Command2");
        QVERIFY(!window());
        receive(juliet, "<NICKNAME>juli</NICKNAME>");
        QVERIFY(window() && window() != first && window()->isVisible());
        QTRY_VERIFY(!first);
        QCOMPARE(text("nick"), "juli");
    }

    void goesWithItsSession()
    {
        receive("", ownCard);
        const QPointer<VCardForm> form = window();
        world_->client.Core->PluginManager->sessions().session(own)->Close();
        QVERIFY(!window() && !form->isVisible());
        QTRY_VERIFY(!form);
        receive(own, ownCard);
        QCOMPARE(text("name1"), "Romeo");
    }

    void tellsWhatTheAnswerBrought_data()
    {
        columns<QString, QString, QString>("stanza", "state", "nick");
        const QString head = "<iq id='vcard_wj_3' from='juliet@capulet.example' type=";
        row("empty", head + "'result'><VCARD xmlns='vcard-temp'/></iq>", "This card is empty.", "");
        row("full", head + "'result'><VCARD xmlns='vcard-temp'><URL>u</URL></VCARD></iq>", "", "");
        row("error", head + "'error'><VCARD xmlns='vcard-temp'/><error code='404'>No &lt;b></error></iq>",
            "The card could not be read: No <b>", "before");
    }
    void tellsWhatTheAnswerBrought()
    {
        QFETCH(QString, stanza);
        receive(juliet, "<NICKNAME>before</NICKNAME>");
        world_->engine.inject(stanza);
        QTEST(text("nick"), "nick");
        const auto* state = ui::find<QLabel>(window(), "lblState");
        QTEST(state->text(), "state");
        QCOMPARE(state->textFormat(), Qt::PlainText);
        QCOMPARE(state->isVisible(), !state->text().isEmpty());
    }

    void opensNoWindowForOtherStanzas_data()
    {
        columns<QString, QString, QString>("type", "id", "boxes");
        row("a question of another's", "get", "x", "");
        row("an order of another's", "set", "x", "");
        row("saved", "result", "JCOM_51", "");
        row("not saved", "error", "JCOM_51",
            "The card could not be saved: The server answered with error 500.|");
    }
    void opensNoWindowForOtherStanzas()
    {
        const auto [type, id] = fetched<QString, QString>();
        receive(own, ownCard, type, id);
        QVERIFY(!window());
        QString boxes;
        for (const auto& box : world_->desktop.boxes.shown)
            boxes += box.text + '|';
        QTEST(boxes, "boxes");
    }

    void marksMissingFields()
    {
        for (const bool ok : {false, true}) {
            receive(own, "<N><GIVEN>Romeo</GIVEN></N><NICKNAME>rm</NICKNAME>");
            const auto* form = window();
            ui::find<QTabWidget>(form, "SSTab1")->setCurrentIndex(2);
            const auto base = [form](const char* name) {
                return ui::find<QLineEdit>(form, name)->palette().color(QPalette::Base);
            };
            const QColor plain = base("name1");
            ui::click(form, ok ? "cmdOK" : "Command3");
            const auto boxes = std::exchange(world_->desktop.boxes.shown, {});
            QCOMPARE(boxes.size(), 1);
            QCOMPARE(boxes.first().title, "Attention!");
            QCOMPARE(boxes.first().text,
                     ok ? "The required fields have not been completed !" : "Fields in Bold are required !!");
            QCOMPARE(window(), form);
            QCOMPARE(world_->engine.takeSent(), QStringList());
            QCOMPARE(form->focusWidget(), ui::find<QLineEdit>(form, "surname"));
            QVERIFY(form->focusWidget()->isVisible());
            QVERIFY(base("surname") != plain && base("email") != plain);
            QVERIFY(base("name1") == plain && base("nick") == plain && base("middle") == plain);
            ui::type(form, "surname", "M");
            QVERIFY(base("surname") == plain && base("email") != plain);
        }
    }

    void sendsTheCard()
    {
        for (const char* button : {"Command3", "cmdOK"}) {
            receive("", ownCard);
            ui::type(window(), "nick", "a&b <c>");
            ui::type(window(), "middle", "di");
            ui::click(window(), button);
            VCard card;
            card.name1 = "Romeo";
            card.middle = "di";
            card.surname = "Montague";
            card.nick = "a&b <c>";
            card.email = own;
            QCOMPARE(world_->engine.takeSent(), QStringList(card.stanza()));
            QVERIFY(world_->desktop.boxes.shown.isEmpty());
            QCOMPARE(!window(), button == QByteArray("cmdOK"));
        }
    }

    void keepsTheCardWhenItCantBeSent()
    {
        receive(own, ownCard);
        world_->engine.gateway().connected = false;
        ui::click(window(), "cmdOK");
        QCOMPARE(world_->desktop.boxes.shown.size(), 1);
        QCOMPARE(world_->engine.takeSent(), QStringList());
        QCOMPARE(text("name1"), "Romeo");
    }

    void tabLeadsFromFieldToField()
    {
        receive(own, "<EMAIL><PREF/>a@b</EMAIL><URL>u</URL>"); // both links stand there
        auto* field = ui::find<QWidget>(window(), "name1");
        field->setFocus();
        for (const auto* next :
             {"middle", "surname", "nick", "email", "emails", "persurl", "birth", "occupation", "Label5"}) {
            QTest::keyClick(field, Qt::Key_Tab);
            field = window()->focusWidget();
            QCOMPARE(field->objectName(), next);
        }
    }

    void opensLinksThroughTheDesktop_data()
    {
        columns<QString, QString, QString, bool>("card", "link", "opened", "refused");
        row("mail", ownCard, "Label5", "mailto:" + own, false);
        row("page", "<URL>https://m.example/a</URL>", "Label7", "https://m.example/a", false);
        row("no scheme", "<URL>m.example</URL>", "Label7", "http://m.example", false);
        row("no mail", "<URL>u</URL>", "Label5", "", false);
        row("no page", ownCard, "Label7", "", false);
        row("a program", "<URL>file:///bin/sh</URL>", "Label7", "", true);
        row("a script", "<URL>javascript:alert(1)</URL>", "Label7", "", true);
        row("an attachment", "<EMAIL><PREF/>a@b.example?attach=/etc/passwd</EMAIL>", "Label5", "", true);
    }
    void opensLinksThroughTheDesktop()
    {
        const auto [card, link, opened, refused] = fetched<QString, QString, QString, bool>();
        receive(juliet, card);
        const auto* state = ui::find<QLabel>(window(), "lblState");
        QVERIFY(state->text().isEmpty());
        auto* label = ui::find<QLabel>(window(), link.toLatin1());
        QTest::mouseClick(label, Qt::LeftButton, {}, label->rect().center());
        QCOMPARE(world_->links.opened.join(u'|'), opened);
        QCOMPARE(!state->text().isEmpty(), refused);
    }
};

BRELO_TEST(VCardWindowsTest)
#include "VCardWindowsTest.moc"
