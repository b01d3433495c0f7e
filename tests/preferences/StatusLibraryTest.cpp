#include "preferences/StatusLibrary.h"
#include "PreferencesFixture.h"

#include <sys/stat.h>

// The prepared status texts, in the page that edits them.
class StatusLibraryTest : public QObject
{
    Q_OBJECT
    static QString fileName() { return paths::configFolder() + "/StatusMsgs.xml"; }
    static void put(const QByteArray& text) { files::write(fileName(), text); }
    static QByteArray content() { return files::read(fileName()); }
    static QWidget* page(PreferencesFixture& f, const QString& state)
    {
        auto* panel = f.page("Personal");
        ui::find<QComboBox>(panel, "ComboStatus")->setCurrentText(state);
        return panel;
    }
    static QListWidget& list(QWidget* panel) { return *ui::find<QListWidget>(panel, "MessList"); }
    static QString texts(QWidget* panel)
    {
        QStringList all;
        for (int row = 0; row < list(panel).count(); ++row)
            all += list(panel).item(row)->text();
        return all.join(u'|');
    }

    std::optional<PreferencesFixture> f;
private slots:
    void init() { f.emplace(); }

    void aMissingFileIsMadeWithTexts()
    {
        auto* panel = page(*f, "Extended Away");
        QCOMPARE(texts(panel), "Extended Away|Gone Home|At Work|I'm sleeping");
        QCOMPARE(StatusLibrary().states(),
                 QStringList({"Available", "Away", "Extended Away", "Do Not Disturb", "Free For Chat"}));
        QVERIFY(content().contains("<status type=\"Away\"><message>Not at my desk rigth "
                                   "now</message><message>Coffe Break</message></status>"));
    }

    void aChosenTextIsTheStatesText_data()
    {
        columns<QString, QString>("state", "changed"); // of Av, Away, xAway, DND and Free for Chat
        row("Available", "Available", "two,Away,xAway,DND,FFC");
        row("Away", "Away", "Av,two,xAway,DND,FFC");
        row("Extended away", "Extended away", "Av,Away,two,DND,FFC");
        row("Extended Away, kept", "Extended Away", "Av,Away,xAway,DND,FFC");
        row("Do Not Disturb", "Do Not Disturb", "Av,Away,xAway,two,FFC");
        row("Free for Chat", "Free for Chat", "Av,Away,xAway,DND,two");
        row("Free For Chat, kept", "Free For Chat", "Av,Away,xAway,DND,FFC");
    }
    void aChosenTextIsTheStatesText()
    {
        QFETCH(QString, state);
        auto& now = f->client.settings;
        const QList<QString*> all{&now.StatusAv, &now.StatusAway, &now.StatusXAway, &now.StatusDND,
                                  &f->client.FreeForChatMsg};
        QStringList before{"Av", "Away", "xAway", "DND", "FFC"};
        for (int i = 0; i < all.size(); ++i)
            *all[i] = before[i];
        const QString file = "<breloim><status type='x'/><status type='%1'><message>one</message>"
                             "<message>two</message></status></breloim>";
        put(file.arg(state).toUtf8());
        auto* panel = page(*f, state);
        list(panel).setCurrentRow(0, QItemSelectionModel::NoUpdate); // as Tab does: nothing is chosen
        list(panel).setCurrentRow(1);
        QStringList after;
        for (const auto* text : all)
            after += *text;
        QTEST(after.join(u','), "changed");
    }

    void textsAreAddedWhereTheFileKnowsTheState_data()
    {
        columns<QString, QString, QString>("state", "typed", "after");
        row("Available", "Available", "At <home> & well", "On Line|At <home> & well");
        row("Away", "Away", "Lunch", "Not at my desk rigth now|Coffe Break|Lunch");
        row("spelt otherwise", "Do Not Disturb", "Hush", "Do Not Disturb|In a meeting|Working");
        row("nothing", "Available", "", "On Line");
    }
    void textsAreAddedWhereTheFileKnowsTheState()
    {
        const auto [state, typed] = fetched<QString, QString>();
        auto* panel = page(*f, state);
        f->outside.boxes.inputs = {typed};
        ui::click(panel, "Command1");
        QTEST(texts(panel), "after");
        QCOMPARE(f->outside.boxes.shown.first().title, "Add Status Messages");
        QCOMPARE(f->outside.boxes.shown.first().text, "Enter a message ...");
        QCOMPARE(StatusLibrary().messages(state).join(u'|'), texts(panel));
    }

    void aTextIsRemoved()
    {
        put("<breloim>\n <status type='Away'><!-- mine --><message>a</message>\n "
            "<message>b</message></status>"
            "</breloim>");
        auto* panel = page(*f, "Away");
        ui::click(panel, "Command2"); // nothing is selected
        QCOMPARE(texts(panel), "a|b");
        list(panel).setCurrentRow(0);
        ui::click(panel, "Command2");
        QCOMPARE(texts(panel), "b");
        QVERIFY(content().contains("<!-- mine -->") && !content().contains("<message>a<"));
    }

    void aDamagedFileIsKeptBesideANewOne()
    {
        const QByteArray damaged = "<breloim><status type=\"Away\">";
        put(damaged);
        QCOMPARE(ui::find<QComboBox>(f->page("Personal"), "ComboStatus")->count(), 5);
        QTRY_COMPARE(f->outside.boxes.shown.size(), 1);
        QVERIFY(f->outside.boxes.shown[0].text.contains("StatusMsgs.xml.damaged"));
        QCOMPARE(files::read(paths::configFolder() + "/StatusMsgs.xml.damaged"), damaged);
        QVERIFY(content().contains("Not at my desk"));
    }

    // It would keep whoever opens it waiting for ever.
    void aPipeInItsPlaceIsTold()
    {
        QVERIFY(paths::makePrivateFolder(paths::configFolder()));
        QCOMPARE(::mkfifo(QFile::encodeName(fileName()).constData(), 0600), 0);
        QCOMPARE(ui::find<QComboBox>(f->page("Personal"), "ComboStatus")->count(), 0);
        QTRY_COMPARE(f->outside.boxes.shown.size(), 1);
        QVERIFY(f->outside.boxes.shown[0].text.contains("no file"));
    }
};

BRELO_TEST(StatusLibraryTest)
#include "StatusLibraryTest.moc"
