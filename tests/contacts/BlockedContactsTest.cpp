#include "contacts/BlockedContacts.h"
#include "contacts/Client.h"
#include "settings/Paths.h"
#include "support/Files.h"
#include "support/Table.h"
#include "support/TempProfile.h"
#include "support/TestRunner.h"

class BlockedContactsTest : public QObject
{
    Q_OBJECT
    static QString listFile() { return paths::configFolder() + "/BannedList.xml"; }
    static QByteArray banned(const QString& items) { return ("<banned>" + items + "</banned>\n").toUtf8(); }

private slots:
    void aMissingFileIsMadeAtTheFirstLoad()
    {
        TempProfile profile;
        Client client;
        QCOMPARE(BlockedContacts(client).load(), QString());
        QCOMPARE(files::read(profile.path() + "/data/Brelo/BreloIM/ConfigFile/BannedList.xml"),
                 QByteArray("<banned></banned>\n"));
        constexpr auto owners = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
        QCOMPARE(int(QFile::permissions(listFile()) & ~owners), 0);
    }

    void aFileIsLoadedOnce_data()
    {
        columns<QString, QString>("bytes", "expected");
        row("twice the same", "<banned><item>a@x</item><item>b@x</item><item>a@x</item></banned>",
            "a@x;b@x;");
        row("escaped", "<banned>\r\n <item>a&amp;b@x</item>\r\n</banned>\r\n", "a&b@x;");
        row("8-bit of old", QString::fromLatin1("<banned><item>ren\xE9@x</item></banned>"), "ren\u00e9@x;");
        row("UTF-8", QString::fromLatin1("<banned><item>ren\xC3\xA9@x</item></banned>"), "ren\u00e9@x;");
        row("an empty item", "<banned><item/></banned>", "");
    }
    void aFileIsLoadedOnce()
    {
        QFETCH(QString, bytes);
        TempProfile profile;
        files::write(listFile(), bytes.toLatin1());
        Client client;
        QCOMPARE(BlockedContacts(client).load(), QString());
        QCOMPARE(BlockedContacts(client).load(), QString());
        QString loaded;
        for (int position = 1; position <= client.MyBanList.Count(); ++position)
            loaded += client.MyBanList.Item(position)->JID + ';';
        QTEST(loaded, "expected");
    }

    void aChangeIsWritten_data()
    {
        // before, after: the items; change: + or - and the address
        columns<QString, QString, QString>("before", "change", "after");
        const QString a = "<item>a@x</item>";
        row("add", "", "+a&b@x", "<item>a&amp;b@x</item>");
        row("add an occupant", "", "+r@x/will", "<item>r@x/will</item>");
        row("add twice", a, "+a@x", a + a);
        row("remove the first only", a + "<item>b@x</item>" + a, "-a@x", "<item>b@x</item>" + a);
        row("remove a stranger", a, "-A@x", a);
        row("add to no file", "none", "+a@x", a);
    }
    void aChangeIsWritten()
    {
        const auto [before, change, after] = fetched<QString, QString, QString>();
        TempProfile profile;
        if (before != "none")
            files::write(listFile(), banned(before));
        Client client;
        BlockedContacts blocked(client);
        if (change.startsWith('-'))
            client.MyBanList.Add(change.mid(1));
        QVERIFY((change.startsWith('+') ? blocked.add(change.mid(1)) : blocked.remove(1)).isEmpty());
        QCOMPARE(blocked.contains(change.mid(1) + "/work"), change.startsWith('+') && !change.contains('/'));
        QCOMPARE(blocked.contains(change.mid(1)), change.startsWith('+'));
        QCOMPARE(files::read(listFile()), banned(after));
        // Nothing of the writing is left beside it.
        const QStringList left = QFileInfo(listFile()).dir().entryList(QDir::Files | QDir::Hidden);
        QCOMPARE(left, QStringList("BannedList.xml"));
    }

    void aFileThatCannotBeUsedIsLeftAlone_data()
    {
        columns<QString, bool, int>("text", "readOnly", "loaded");
        row("no XML", "these are my foes", false, -1);
        row("cut in half", "<banned><item>a@x</it", false, -1);
        row("empty", "", false, -1);
        row("something else", "<html><item>a@x</item></html>", false, -1);
        row("read-only", "<banned><item>a@x</item></banned>", true, 1);
    }
    void aFileThatCannotBeUsedIsLeftAlone()
    {
        const auto [text, readOnly, loaded] = fetched<QString, bool, int>();
        TempProfile profile;
        files::write(listFile(), text.toUtf8());
        if (readOnly)
            QFile::setPermissions(listFile(), QFile::ReadOwner);
        Client client;
        BlockedContacts blocked(client);
        QCOMPARE(blocked.load().isEmpty(), loaded >= 0);
        QCOMPARE(client.MyBanList.Count(), qMax(loaded, 0));
        QVERIFY(blocked.add("b@x").contains(listFile()));
        QVERIFY(blocked.remove(1).contains(listFile()));
        QVERIFY(blocked.contains("b@x")); // for this run
        QCOMPARE(client.MyBanList.Count(), qMax(loaded, 0) + 1);
        QCOMPARE(files::read(listFile()), text.toUtf8());
    }

    void aFolderThatCannotBeMadeIsTold()
    {
        TempProfile profile;
        files::write(profile.path() + "/data/Brelo", "in the way");
        Client client;
        QVERIFY(!BlockedContacts(client).load().isEmpty());
        QVERIFY(!BlockedContacts(client).add("a@x").isEmpty());
        QCOMPARE(files::read(profile.path() + "/data/Brelo"), QByteArray("in the way"));
    }
};

BRELO_TEST(BlockedContactsTest)
#include "BlockedContactsTest.moc"
