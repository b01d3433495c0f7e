#include "PreferencesFixture.h"

using Box = RecordingBoxes::Box;
using Icon = MessageBoxes::Icon;
using Buttons = MessageBoxes::Buttons;

// Blocking and unblocking in the preferences.
class PrivacyTest : public QObject
{
    Q_OBJECT
    static QString file() { return paths::configFolder() + "/BannedList.xml"; }
    static QString stored() { return files::read(file()).trimmed(); }
    static void store(const QByteArray& text) { files::write(file(), text); }
    static QListWidget& list(PreferencesFixture& f)
    {
        return *ui::find<QListWidget>(f.page("Privacy"), "List1");
    }
    static QStringList shown(PreferencesFixture& f)
    {
        QStringList texts;
        for (int row = 0; row < list(f).count(); ++row)
            texts += list(f).item(row)->text();
        return texts;
    }

private slots:
    void anAddressIsBlocked_data()
    {
        columns<QString, QString, QString>("typed", "blocked", "box"); // the box is a second one's title
        row("plain", "paris@verona.example", "paris@verona.example", "");
        row("as a person types", " Paris@Verona.example/phone ", "paris@verona.example", "");
        row("a gateway", "icq.verona.example", "icq.verona.example", "");
        row("of an XML kind", "o'neil&co@x", "", "New blocked User");
        row("empty", "  ", "", "");
        row("no address", "my neighbour", "", "New blocked User");
        row("half an address", "paris@", "", "New blocked User");
        row("a resource alone", "/phone", "", "New blocked User");
        row("blocked already", "TYBALT@x", "", "Note !");
    }
    void anAddressIsBlocked()
    {
        const auto [typed, blocked, box] = fetched<QString, QString, QString>();
        PreferencesFixture f;
        store("<banned><item>tybalt@x</item></banned>");
        auto* page = f.page("Privacy");
        QCOMPARE(shown(f), QStringList("tybalt@x")); // before any sign-in
        QSignalSpy changed(f.form, &PreferencesForm::blockedListChanged);
        f.outside.boxes.inputs = {typed}; // and then the question is cancelled
        ui::click(page, "cmdAdd");
        QCOMPARE(f.outside.boxes.shown.first(),
                 (Box{"New blocked User", "Please, add the identifier of the contact to block...", Icon::None,
                      Buttons::Ok}));
        QCOMPARE(f.outside.boxes.shown.value(1).title, box);
        const QStringList expected =
            blocked.isEmpty() ? QStringList("tybalt@x") : QStringList({"tybalt@x", blocked});
        QCOMPARE(shown(f), expected);
        QCOMPARE(changed.count(), blocked.isEmpty() ? 0 : 1);
        QCOMPARE(f.client.MyBanList.BannedJID(blocked), !blocked.isEmpty());
        QCOMPARE(stored().count("<item>"), expected.size());
    }

    void theSelectedContactIsUnblocked()
    {
        PreferencesFixture f;
        store("<banned><item>a@x</item><item>b@x</item><item>c@x</item></banned>");
        auto* page = f.page("Privacy");
        QSignalSpy changed(f.form, &PreferencesForm::blockedListChanged);
        list(f).setCurrentRow(1);
        ui::click(page, "cmdRemove");
        QCOMPARE(shown(f), QStringList({"a@x", "c@x"}));
        QCOMPARE(stored(), "<banned><item>a@x</item><item>c@x</item></banned>");
        QVERIFY(!f.client.MyBanList.BannedJID("b@x"));
        QVERIFY(QTest::qWaitForWindowActive(f.form));
        auto* contacts = ui::find<QListWidget>(page, "List1");
        contacts->setFocus();
        QTest::keyClick(contacts, Qt::Key_Up);
        QTest::keyClick(contacts, Qt::Key_Delete);
        QCOMPARE(shown(f), QStringList("c@x"));
        QCOMPARE(changed.count(), 2);
        // A contact that is blocked elsewhere is there when the page comes back.
        f.page("Sounds");
        f.client.MyBanList.Add("d@x");
        QCOMPARE(shown(f), QStringList({"c@x", "d@x"}));
        QVERIFY(f.outside.boxes.shown.isEmpty());
    }

    void removingNeedsASelectionAndAFileToWrite()
    {
        PreferencesFixture f;
        store("<banned><item>a@x</item></banned>");
        auto* page = f.page("Privacy");
        list(f).setCurrentRow(0, QItemSelectionModel::NoUpdate); // as Tab does
        ui::click(page, "cmdRemove");
        QCOMPARE(f.outside.boxes.shown, QList<Box>({{"Attention!", "Please select a contac first!",
                                                     Icon::Exclamation, Buttons::Ok}}));
        QFile::setPermissions(file(), QFile::ReadOwner);
        list(f).setCurrentRow(0);
        ui::click(page, "cmdRemove");
        QCOMPARE(f.outside.boxes.shown.size(), 2);
        QVERIFY(f.outside.boxes.shown.last().text.contains(file()));
        QCOMPARE(shown(f), QStringList("a@x"));
        QVERIFY(f.client.MyBanList.BannedJID("a@x"));
    }
};

BRELO_TEST(PrivacyTest)
#include "PrivacyTest.moc"
