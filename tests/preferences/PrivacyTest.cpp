#include "PreferencesFixture.h"
#include "settings/Paths.h"
#include "support/TestRunner.h"

#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QSignalSpy>

using Box = RecordingBoxes::Box;
using Icon = MessageBoxes::Icon;
using Buttons = MessageBoxes::Buttons;

// Blocking and unblocking in the preferences.
class PrivacyTest : public QObject
{
    Q_OBJECT

private slots:
    void anAddressIsBlocked_data();
    void anAddressIsBlocked();
    void theSelectedContactIsUnblocked();
    void removingNeedsASelection();
    void whatCannotBeWrittenStaysBlocked();

private:
    static QString file() { return paths::configFolder() + QStringLiteral("/BannedList.xml"); }
    static QString stored()
    {
        QFile in(file());
        return in.open(QIODevice::ReadOnly) ? QString::fromUtf8(in.readAll()).trimmed() : QString();
    }
    static void store(const QByteArray& text)
    {
        QDir().mkpath(paths::configFolder());
        QFile out(file());
        QVERIFY(out.open(QIODevice::WriteOnly));
        out.write(text);
    }
    static QListWidget& list(PreferencesFixture& f)
    {
        return *ui::find<QListWidget>(f.page(QStringLiteral("Privacy")), "List1");
    }
    static QStringList shown(PreferencesFixture& f)
    {
        QStringList texts;
        for (int row = 0; row < list(f).count(); ++row)
            texts += list(f).item(row)->text();
        return texts;
    }
};

void PrivacyTest::anAddressIsBlocked_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("blocked"); // empty when nothing is
    QTest::addColumn<QString>("box");     // the title of a second box
    const QString refused = QStringLiteral("New blocked User");
    QTest::newRow("plain") << "paris@verona.example"
                           << "paris@verona.example" << QString();
    QTest::newRow("as a person types") << " Paris@Verona.example/phone "
                                       << "paris@verona.example" << QString();
    QTest::newRow("a gateway") << "icq.verona.example"
                               << "icq.verona.example" << QString();
    QTest::newRow("of an XML kind") << "o'neil&co@x"
                                    << "o'neil&co@x" << QString();
    QTest::newRow("empty") << "  " << QString() << QString();
    QTest::newRow("no address") << "my neighbour" << QString() << refused;
    QTest::newRow("half an address") << "paris@" << QString() << refused;
    QTest::newRow("a resource alone") << "/phone" << QString() << refused;
    QTest::newRow("blocked already") << "TYBALT@x" << QString() << "Note !";
}

void PrivacyTest::anAddressIsBlocked()
{
    QFETCH(QString, typed);
    QFETCH(QString, blocked);
    QFETCH(QString, box);
    PreferencesFixture f;
    store("<banned><item>tybalt@x</item></banned>");
    auto* page = f.page(QStringLiteral("Privacy"));
    QCOMPARE(shown(f), QStringList("tybalt@x")); // before any sign-in
    QSignalSpy changed(f.form, &PreferencesForm::blockedListChanged);
    f.outside.boxes.inputs = {typed};
    ui::click(page, "cmdAdd");
    QCOMPARE(f.outside.boxes.shown.first(),
             (Box{QStringLiteral("New blocked User"),
                  QStringLiteral("Please, add the identifier of the contact to block..."), Icon::None,
                  Buttons::Ok}));
    QCOMPARE(f.outside.boxes.shown.size(), box.isEmpty() ? 1 : 2);
    QCOMPARE(f.outside.boxes.shown.last().title, box.isEmpty() ? QStringLiteral("New blocked User") : box);
    const QStringList expected =
        blocked.isEmpty() ? QStringList("tybalt@x") : QStringList({"tybalt@x", blocked});
    QCOMPARE(shown(f), expected);
    QCOMPARE(changed.count(), blocked.isEmpty() ? 0 : 1);
    QCOMPARE(f.client.MyBanList.BannedJID(blocked), !blocked.isEmpty());
    QCOMPARE(stored().count(QStringLiteral("<item>")), expected.size());
}

void PrivacyTest::theSelectedContactIsUnblocked()
{
    PreferencesFixture f;
    store("<banned><item>a@x</item><item>b@x</item><item>c@x</item></banned>");
    auto* page = f.page(QStringLiteral("Privacy"));
    QSignalSpy changed(f.form, &PreferencesForm::blockedListChanged);
    list(f).setCurrentRow(1);
    ui::click(page, "cmdRemove");
    QCOMPARE(shown(f), QStringList({"a@x", "c@x"}));
    QCOMPARE(stored(), QStringLiteral("<banned><item>a@x</item><item>c@x</item></banned>"));
    QVERIFY(!f.client.MyBanList.BannedJID(QStringLiteral("b@x")));
    QVERIFY(QTest::qWaitForWindowActive(f.form));
    auto* contacts = &list(f);
    contacts->setCurrentRow(0);
    contacts->setFocus();
    QTest::keyClick(contacts, Qt::Key_Delete);
    QCOMPARE(shown(f), QStringList("c@x"));
    QCOMPARE(changed.count(), 2);
    // A contact that is blocked elsewhere is there when the page comes back.
    f.page(QStringLiteral("Sounds"));
    f.client.MyBanList.Add(QStringLiteral("d@x"));
    QCOMPARE(shown(f), QStringList({"c@x", "d@x"}));
    QVERIFY(f.outside.boxes.shown.isEmpty());
}

void PrivacyTest::removingNeedsASelection()
{
    PreferencesFixture f;
    ui::click(f.page(QStringLiteral("Privacy")), "cmdRemove");
    QCOMPARE(f.outside.boxes.shown,
             QList<Box>({{QStringLiteral("Attention!"), QStringLiteral("Please select a contac first!"),
                          Icon::Exclamation, Buttons::Ok}}));
}

void PrivacyTest::whatCannotBeWrittenStaysBlocked()
{
    PreferencesFixture f;
    store("<banned><item>a@x</item></banned>");
    auto* page = f.page(QStringLiteral("Privacy"));
    QFile::setPermissions(file(), QFile::ReadOwner);
    list(f).setCurrentRow(0);
    ui::click(page, "cmdRemove");
    QCOMPARE(f.outside.boxes.shown.size(), 1);
    QVERIFY(f.outside.boxes.shown.first().text.contains(file()));
    QCOMPARE(shown(f), QStringList("a@x"));
    QVERIFY(f.client.MyBanList.BannedJID(QStringLiteral("a@x")));
}

BRELO_TEST(PrivacyTest)
#include "PrivacyTest.moc"
