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

private slots:
    void aMissingFileIsMadeAtTheFirstLoad()
    {
        TempProfile profile;
        Client client;
        QCOMPARE(BlockedContacts(client).load(), QString());
        QCOMPARE(files::read(profile.path() + "/data/Brelo/BreloIM/ConfigFile/BannedList.xml"),
                 QByteArray("<banned></banned>\n"));
        const auto others = QFile::permissions(listFile()) &
                            ~(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser);
        QCOMPARE(int(others), 0);
    }

    void aFileIsLoadedOnce_data()
    {
        columns<QByteArray, QStringList>("text", "expected");
        row("twice the same", QByteArray("<banned><item>a@x</item><item>b@x</item><item>a@x</item></banned>"),
            QStringList({"a@x", "b@x"}));
        row("escaped", QByteArray("<banned>\r\n <item>a&amp;b@x</item>\r\n</banned>\r\n"),
            QStringList("a&b@x"));
        row("8-bit of old", QByteArray("<banned><item>ren\xE9@x</item></banned>"),
            QStringList(QString::fromUtf8("ren\u00e9@x")));
        row("UTF-8", QByteArray("<banned><item>ren\xC3\xA9@x</item></banned>"),
            QStringList(QString::fromUtf8("ren\u00e9@x")));
        row("an empty item", QByteArray("<banned><item/></banned>"), QStringList());
    }

    void aFileIsLoadedOnce()
    {
        QFETCH(QByteArray, text);
        TempProfile profile;
        files::write(listFile(), text);
        Client client;
        QCOMPARE(BlockedContacts(client).load(), QString());
        QCOMPARE(BlockedContacts(client).load(), QString());
        QStringList loaded;
        for (int position = 1; position <= client.MyBanList.Count(); ++position)
            loaded += client.MyBanList.Item(position)->JID;
        QTEST(loaded, "expected");
    }

    void aChangeIsWritten_data()
    {
        // change: + or - and the address
        columns<QByteArray, QString, QByteArray>("before", "change", "after");
        row("add", QByteArray("<banned></banned>\n"), "+a&b@x",
            QByteArray("<banned><item>a&amp;b@x</item></banned>\n"));
        row("add twice", QByteArray("<banned><item>a@x</item></banned>"), "+a@x",
            QByteArray("<banned><item>a@x</item><item>a@x</item></banned>\n"));
        row("remove the first only",
            QByteArray("<banned><item>a@x</item><item>b@x</item><item>a@x</item></banned>"), "-a@x",
            QByteArray("<banned><item>b@x</item><item>a@x</item></banned>\n"));
        row("remove a stranger", QByteArray("<banned><item>a@x</item></banned>"), "-A@x",
            QByteArray("<banned><item>a@x</item></banned>\n"));
        row("add to no file", QByteArray(), "+a@x", QByteArray("<banned><item>a@x</item></banned>\n"));
    }

    void aChangeIsWritten()
    {
        const auto [before, change] = fetched<QByteArray, QString>();
        TempProfile profile;
        if (!before.isEmpty())
            files::write(listFile(), before);
        Client client;
        BlockedContacts blocked(client);
        if (change.startsWith('-'))
            client.MyBanList.Add(change.mid(1));
        QCOMPARE(change.startsWith('+') ? blocked.add(change.mid(1) + "/home") : blocked.remove(1),
                 QString());
        QCOMPARE(blocked.contains(change.mid(1) + "/work"), change.startsWith('+'));
        QTEST(files::read(listFile()), "after");
        // Nothing of the writing is left beside it.
        QCOMPARE(QFileInfo(listFile()).dir().entryList(QDir::Files | QDir::Hidden),
                 QStringList("BannedList.xml"));
    }

    void aFileThatCannotBeUsedIsLeftAlone_data()
    {
        columns<QByteArray, bool, int>("text", "readOnly", "loaded");
        row("no XML", QByteArray("these are my foes"), false, -1);
        row("cut in half", QByteArray("<banned><item>a@x</it"), false, -1);
        row("empty", QByteArray(), false, -1);
        row("something else", QByteArray("<html><item>a@x</item></html>"), false, -1);
        row("read-only", QByteArray("<banned><item>a@x</item></banned>"), true, 1);
    }

    void aFileThatCannotBeUsedIsLeftAlone()
    {
        const auto [text, readOnly, loaded] = fetched<QByteArray, bool, int>();
        TempProfile profile;
        files::write(listFile(), text);
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
        QCOMPARE(files::read(listFile()), text);
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

private:
    static QString listFile() { return paths::configFolder() + "/BannedList.xml"; }
};

BRELO_TEST(BlockedContactsTest)
#include "BlockedContactsTest.moc"
