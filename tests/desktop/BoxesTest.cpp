#include "desktop/forms/QtDesktop.h"
#include "support/Table.h"
#include "support/TestRunner.h"

using Answer = MessageBoxes::Answer;
using Buttons = MessageBoxes::Buttons;

// Runs `act` on the box that comes up next, inside its event loop.
template <typename Box, typename Act>
static void whenShown(Act act)
{
    QTimer::singleShot(0, qApp, [act] {
        auto* box = qobject_cast<Box*>(QApplication::activeModalWidget());
        QVERIFY(box);
        act(box);
    });
}

class BoxesTest : public QObject
{
    Q_OBJECT

private slots:
    void theAnswerIsTheButton_data()
    {
        // press: a button or a key
        columns<MessageBoxes::Icon, Buttons, int, Answer>("icon", "buttons", "press", "answer");
        const auto asks = MessageBoxes::Icon::Question;
        row("ok", asks, Buttons::Ok, int(QMessageBox::Ok), Answer::Ok);
        row("ok by escape", asks, Buttons::Ok, int(Qt::Key_Escape), Answer::Ok);
        row("yes", asks, Buttons::YesNo, int(QMessageBox::Yes), Answer::Yes);
        row("no by escape", asks, Buttons::YesNo, int(Qt::Key_Escape), Answer::No);
        row("no", asks, Buttons::YesNoCancel, int(QMessageBox::No), Answer::No);
        row("cancel", asks, Buttons::YesNoCancel, int(QMessageBox::Cancel), Answer::Cancel);
        row("cancel by escape", asks, Buttons::YesNoCancel, int(Qt::Key_Escape), Answer::Cancel);
        row("enter", asks, Buttons::YesNoCancel, int(Qt::Key_Return), Answer::Yes);
        row("enter, after thought", asks, Buttons::NoYesCancel, int(Qt::Key_Return), Answer::No);
        row("enter, at a warning", MessageBoxes::Icon::Exclamation, Buttons::YesNo, int(Qt::Key_Return),
            Answer::No);
    }
    void theAnswerIsTheButton()
    {
        const auto [icon, buttons, press, answer] = fetched<MessageBoxes::Icon, Buttons, int, Answer>();
        whenShown<QMessageBox>([press](QMessageBox* box) {
            if (auto* button = box->button(QMessageBox::StandardButton(press)))
                QTest::mouseClick(button, Qt::LeftButton);
            else
                QTest::keyClick(box, Qt::Key(press));
        });
        QCOMPARE(QtMessageBoxes().show("t", "x", icon, buttons), answer);
    }

    void textsArePlain()
    {
        const QString text = "<img src='http://a.example'>&amp;";
        whenShown<QMessageBox>([text](QMessageBox* box) {
            QCOMPARE(box->windowTitle(), "Title");
            QCOMPARE(box->text(), text);
            QCOMPARE(box->textFormat(), Qt::PlainText);
            QCOMPARE(box->icon(), QMessageBox::Critical);
            box->accept();
        });
        QtMessageBoxes().critical("Title", text);
        whenShown<QInputDialog>([text](QInputDialog* box) {
            const auto* label = box->findChild<QLabel*>();
            QCOMPARE(label->text(), text);
            QCOMPARE(label->textFormat(), Qt::PlainText);
            QCOMPARE(label->buddy(), box->findChild<QLineEdit*>());
            box->reject();
        });
        QVERIFY(!QtMessageBoxes().input("Title", text, {}));
    }

    // What is beyond the laying out is left out of the details too.
    void aLongTextStaysOnTheScreen()
    {
        for (const auto& text : {QString("line\n").repeated(2000), QString(1 << 20, 'w')}) {
            whenShown<QMessageBox>([text](QMessageBox* box) {
                QVERIFY(box->text().size() < 2000);
                QCOMPARE(box->detailedText(), text.left(10'000));
                box->accept();
            });
            QtMessageBoxes().information("Title", text);
        }
    }

    void nobodyWaitsAtTheEndOfTheSystem()
    {
        QtMessageBoxes boxes;
        boxes.setUnattended();
        using Icon = MessageBoxes::Icon;
        QTest::ignoreMessage(QtWarningMsg, "Title - Hark.");
        QCOMPARE(boxes.show("Title", "Hark.", Icon::Critical, Buttons::Ok), Answer::Ok);
        for (const auto buttons : {Buttons::YesNo, Buttons::YesNoCancel})
            QCOMPARE(boxes.show("T", "x", Icon::Question, buttons), Answer::No);
        QVERIFY(!boxes.input("T", "x", "preset"));
    }

    void inputGivesWhatWasTyped()
    {
        whenShown<QInputDialog>([](QInputDialog* box) {
            auto* edit = box->findChild<QLineEdit*>();
            QCOMPARE(edit->text(), "pre");
            QTest::keyClicks(edit, "<typed>");
            QTest::keyClick(edit, Qt::Key_Return);
        });
        const auto typed = QtMessageBoxes().input("T", "P", "pre");
        QVERIFY(typed && typed->contains("<typed>"));
    }
};

BRELO_TEST(BoxesTest)
#include "BoxesTest.moc"
