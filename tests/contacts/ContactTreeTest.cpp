#include "contacts/ContactTree.h"
#include "support/Table.h"
#include "support/TestRunner.h"

class ContactTreeTest : public QObject
{
    Q_OBJECT
    int position(const QString& key) { return tree_->NodeIndexOfKey(key); }
    TreeNode* node(const QString& key) { return tree_->Item(position(key)); }
    std::unique_ptr<ContactTree> tree_;

private slots:
    void init()
    {
        tree_ = std::make_unique<ContactTree>();
        tree_->addGroup("Fixed", "IsGroup");
        tree_->addGroup("Friends", "");
        tree_->add("Friends", "a@x", "Ann", "Offline");
        tree_->add("Friends", "b@x", "a@x", "Offline"); // its name is another's key
        tree_->addGroup("Empty", "NewGroup");
    }

    void aLookUpFindsLeavesByKeyOrText_data()
    {
        columns<QString, int, int, int>("name", "leaf", "group", "any");
        row("a key that is another's text too", "a@x", 3, 0, 3);
        row("a text", "Ann", 3, 0, 0);
        row("a group with children", "Friends", 0, 2, 2);
        row("an empty fixed group", "Fixed", 1, 1, 1);
        row("an empty group of the person's", "Empty", 5, 0, 5);
        row("another case", "A@x", 0, 0, 0);
        row("nothing", "", 0, 0, 0);
    }
    void aLookUpFindsLeavesByKeyOrText()
    {
        QFETCH(QString, name);
        QTEST(tree_->NodeIndexByKey(name), "leaf");
        QTEST(tree_->GroupNodeIndex(name), "group");
        QTEST(tree_->NodeIndexOfKey(name), "any");
    }

    void anAddThatCannotStandAddsNothing()
    {
        using Place = std::pair<QString, QString>; // parent and key
        for (const auto& [parent, key] : {Place("Fixed", "a@x"), Place("", "Friends"), Place("Fixed", ""),
                                          Place("Nobody", "c@x"), Place("a@x", "c@x")}) {
            QCOMPARE(tree_->add(parent, key, "Text", "Offline"), nullptr);
            QCOMPARE(tree_->Count(), 5);
            QCOMPARE(tree_->NodeIndexByKey("Text"), 0);
        }
        QVERIFY(tree_->addGroup("a@x", "")); // a folder may be named as a row's key
        QVERIFY(tree_->folder("a@x") != tree_->row("a@x"));
    }

    void namesFollowTheirNodes()
    {
        tree_->setText(*node("a@x"), "Anna");
        QCOMPARE(tree_->NodeIndexByKey("Ann"), 0);
        QCOMPARE(tree_->NodeIndexByKey("Anna"), 3);
        QVERIFY(tree_->remove(node("a@x")));
        QCOMPARE(tree_->NodeIndexByKey("Anna"), 0);
        QCOMPARE(tree_->NodeIndexByKey("a@x"), 4); // by its text, now that the key is gone
        QVERIFY(tree_->remove(node("Friends")));
        QCOMPARE(tree_->Count(), 2);
        QCOMPARE(tree_->NodeIndexByKey("a@x"), 0);
        QVERIFY(!tree_->remove(nullptr));
    }

    void positionsCloseUpWhenSettled()
    {
        tree_->remove(tree_->Item(1));
        tree_->settle();
        QCOMPARE(position("Friends"), 1);
        QCOMPARE(position("Empty"), 4);
        QCOMPARE(tree_->Item(5), nullptr);
        TreeNode* empty = tree_->Item(4);
        tree_->move(node("a@x"), empty);
        QCOMPARE(empty->children.size(), std::size_t{1});
        QCOMPARE(node("b@x")->row, 0);
    }

    void viewsHearOfChangesOnceAGroup()
    {
        for (int contact = 0; contact < 9; ++contact)
            tree_->add("Friends", QString("c%1@x").arg(contact), "C", "Offline");
        tree_->settle();
        QSignalSpy changes(tree_.get(), &QAbstractItemModel::dataChanged);
        for (const auto& key : {"c6@x", "c3@x", "c4@x", "c3@x"}) {
            tree_->setImage(*node(key), "Online");
            tree_->setLook(*node(key), true, 5);
        }
        tree_->setImage(*node("c0@x"), "Offline"); // as it was
        QCOMPARE(changes.count(), 0);
        tree_->settle();
        QCOMPARE(changes.count(), 1);
        QCOMPARE(changes[0][0].toModelIndex().data(ContactTree::KeyRole).toString(), "c3@x");
        QCOMPARE(changes[0][1].toModelIndex().data(ContactTree::KeyRole).toString(), "c6@x");
    }

    void anIndexOfARemovedNodeIsGoodUntilSettled()
    {
        tree_->settle();
        const QModelIndex index = tree_->indexOf(node("b@x"));
        tree_->clear();
        tree_->addGroup("Friends", "");
        QCOMPARE(index.data().toString(), "a@x");
        QCOMPARE(index.parent().data().toString(), "Friends");
        QCOMPARE(tree_->retiredCount(), std::size_t{5});
        tree_->settle();
        QCOMPARE(tree_->retiredCount(), std::size_t{0});
    }

    void anEditOfARebuiltNodeIsStillTold()
    {
        tree_->settle();
        const QModelIndex edited = tree_->indexOf(node("a@x"));
        tree_->clear();
        tree_->addGroup("Friends", "");
        tree_->add("Friends", "a@x", "Ann", "Online");
        QSignalSpy edits(tree_.get(), &ContactTree::labelEdited);
        QVERIFY(tree_->setData(edited, "Annie"));
        QCOMPARE(edits.value(0), QVariantList({"a@x", "Annie"}));
        QCOMPARE(node("a@x")->text, "Annie");
        QVERIFY(!tree_->setData(tree_->indexOf(node("a@x")), "Annie"));
    }
};

BRELO_TEST(ContactTreeTest)
#include "ContactTreeTest.moc"
