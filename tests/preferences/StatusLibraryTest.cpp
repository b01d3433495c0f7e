#include "preferences/StatusLibrary.h"
#include "PreferencesFixture.h"
#include "settings/Paths.h"
#include "support/TestRunner.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QRadioButton>
#include <QSignalSpy>

// The prepared status texts, in the page that edits them.
class StatusLibraryTest : public QObject
{
    Q_OBJECT

private slots:
    void aMissingFileIsMadeWithTexts();
    void aChosenTextIsTheStatesText_data();
    void aChosenTextIsTheStatesText();
    void textsAreAddedWhereTheFileKnowsTheState_data();
    void textsAreAddedWhereTheFileKnowsTheState();
    void aTextIsRemoved();
    void aDamagedFileIsLeftAlone();
    void theContactListStaysOnTop();

private:
    static QString fileName() { return paths::configFolder() + QStringLiteral("/StatusMsgs.xml"); }
    static void put(const QByteArray& text)
    {
        QDir().mkpath(paths::configFolder());
        QFile out(fileName());
        QVERIFY(out.open(QIODevice::WriteOnly));
        out.write(text);
    }
    static QByteArray content()
    {
        QFile in(fileName());
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }
    static PreferencePanel* page(PreferencesFixture& f, const QString& state)
    {
        auto* panel = f.page(QStringLiteral("Personal"));
        ui::find<QComboBox>(panel, "ComboStatus")->setCurrentText(state);
        return panel;
    }
    static QListWidget& list(PreferencePanel* panel) { return *ui::find<QListWidget>(panel, "MessList"); }
    static QString texts(PreferencePanel* panel)
    {
        QStringList all;
        for (int row = 0; row < list(panel).count(); ++row)
            all += list(panel).item(row)->text();
        return all.join(u'|');
    }
};

void StatusLibraryTest::aMissingFileIsMadeWithTexts()
{
    PreferencesFixture f;
    auto* panel = page(f, QStringLiteral("Extended Away"));
    QCOMPARE(texts(panel), QStringLiteral("Extended Away|Gone Home|At Work|I'm sleeping"));
    QCOMPARE(StatusLibrary().states(),
             QStringList({"Available", "Away", "Extended Away", "Do Not Disturb", "Free For Chat"}));
    QVERIFY(content().contains("<status type=\"Away\"><message>Not at my desk rigth now</message>"
                               "<message>Coffe Break</message></status>"));
}

void StatusLibraryTest::aChosenTextIsTheStatesText_data()
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<QString>("changed"); // of Av, Away, xAway, DND and Free for Chat
    QTest::newRow("Available") << "Available"
                               << "two,Away,xAway,DND,FFC";
    QTest::newRow("Away") << "Away"
                          << "Av,two,xAway,DND,FFC";
    QTest::newRow("Extended away") << "Extended away"
                                   << "Av,Away,two,DND,FFC";
    QTest::newRow("Extended Away, kept") << "Extended Away"
                                         << "Av,Away,xAway,DND,FFC";
    QTest::newRow("Do Not Disturb") << "Do Not Disturb"
                                    << "Av,Away,xAway,two,FFC";
    QTest::newRow("Free for Chat") << "Free for Chat"
                                   << "Av,Away,xAway,DND,two";
    QTest::newRow("Free For Chat, kept") << "Free For Chat"
                                         << "Av,Away,xAway,DND,FFC";
}

void StatusLibraryTest::aChosenTextIsTheStatesText()
{
    QFETCH(QString, state);
    Settings settings;
    settings.StatusAv = QStringLiteral("Av");
    settings.StatusAway = QStringLiteral("Away");
    settings.StatusXAway = QStringLiteral("xAway");
    settings.StatusDND = QStringLiteral("DND");
    PreferencesFixture f(settings);
    f.client.FreeForChatMsg = QStringLiteral("FFC");
    put(QStringLiteral("<breloim><status type=\"x\"/><status type=\"%1\"><message>one</message>"
                       "<message>two</message></status></breloim>")
            .arg(state)
            .toUtf8());
    auto* panel = page(f, state);
    QCOMPARE(list(panel).currentRow(), -1);
    list(panel).setCurrentRow(1);
    const auto& now = f.client.settings;
    QTEST(QStringList({now.StatusAv, now.StatusAway, now.StatusXAway, now.StatusDND, f.client.FreeForChatMsg})
              .join(u','),
          "changed");
}

void StatusLibraryTest::textsAreAddedWhereTheFileKnowsTheState_data()
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("after");
    QTest::newRow("Available") << "Available"
                               << "At <home> & well"
                               << "On Line|At <home> & well";
    QTest::newRow("Away") << "Away"
                          << "Lunch"
                          << "Not at my desk rigth now|Coffe Break|Lunch";
    QTest::newRow("spelt otherwise") << "Do Not Disturb"
                                     << "Hush"
                                     << "Do Not Disturb|In a meeting|Working";
    QTest::newRow("nothing") << "Available"
                             << ""
                             << "On Line";
}

void StatusLibraryTest::textsAreAddedWhereTheFileKnowsTheState()
{
    QFETCH(QString, state);
    QFETCH(QString, typed);
    PreferencesFixture f;
    auto* panel = page(f, state);
    f.outside.boxes.inputs = {typed};
    ui::click(panel, "Command1");
    QTEST(texts(panel), "after");
    QCOMPARE(f.outside.boxes.shown.first().title, QStringLiteral("Add Status Messages"));
    QCOMPARE(f.outside.boxes.shown.first().text, QStringLiteral("Enter a message ..."));
    QCOMPARE(StatusLibrary().messages(state).join(u'|'), texts(panel));
}

void StatusLibraryTest::aTextIsRemoved()
{
    PreferencesFixture f;
    put("<breloim>\n <status type=\"Away\"><!-- mine --><message>a</message>\n <message>b</message></status>"
        "</breloim>");
    auto* panel = page(f, QStringLiteral("Away"));
    ui::click(panel, "Command2"); // nothing is selected
    QCOMPARE(texts(panel), QStringLiteral("a|b"));
    list(panel).setCurrentRow(0);
    ui::click(panel, "Command2");
    QCOMPARE(texts(panel), QStringLiteral("b"));
    QVERIFY(content().contains("<!-- mine -->") && !content().contains("<message>a<"));
}

void StatusLibraryTest::aDamagedFileIsLeftAlone()
{
    PreferencesFixture f;
    put("<breloim><status type=\"Away\">");
    auto* panel = f.page(QStringLiteral("Personal"));
    QCOMPARE(ui::find<QComboBox>(panel, "ComboStatus")->count(), 0);
    QVERIFY(f.outside.boxes.shown.isEmpty());
    f.outside.boxes.inputs = {QStringLiteral("Lunch")};
    ui::click(panel, "Command1");
    QCOMPARE(content(), QByteArray("<breloim><status type=\"Away\">"));
}

void StatusLibraryTest::theContactListStaysOnTop()
{
    PreferencesFixture f;
    auto* panel = f.page(QStringLiteral("Personal"));
    QSignalSpy changed(f.form, &PreferencesForm::onTopChanged);
    QVERIFY(ui::find<QRadioButton>(panel, "chkWndNotOnTop")->isChecked());
    ui::find<QRadioButton>(panel, "chkAlwaysOnTop")->click();
    QVERIFY(f.client.settings.OnTop);
    ui::find<QRadioButton>(panel, "chkWndNotOnTop")->click();
    QVERIFY(!f.client.settings.OnTop);
    QCOMPARE(changed.count(), 2);
}

BRELO_TEST(StatusLibraryTest)
#include "StatusLibraryTest.moc"
