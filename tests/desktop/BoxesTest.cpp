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
        // click: 0: Escape
        columns<int, int, int>("buttons", "click", "answer");
        const auto row = [](const char* name, Buttons buttons, int click, Answer answer) {
            QTest::newRow(name) << int(buttons) << click << int(answer);
        };
        row("ok", Buttons::Ok, QMessageBox::Ok, Answer::Ok);
        row("ok by escape", Buttons::Ok, 0, Answer::Ok);
        row("yes", Buttons::YesNo, QMessageBox::Yes, Answer::Yes);
        row("no by escape", Buttons::YesNo, 0, Answer::No);
        row("no", Buttons::YesNoCancel, QMessageBox::No, Answer::No);
        row("cancel", Buttons::YesNoCancel, QMessageBox::Cancel, Answer::Cancel);
        row("cancel by escape", Buttons::YesNoCancel, 0, Answer::Cancel);
    }
    void enterDoesNotSayYesToAWarning()
    {
        whenShown<QMessageBox>([](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Return); });
        QtMessageBoxes boxes;
        QCOMPARE(boxes.show("t", "x", MessageBoxes::Icon::Exclamation, Buttons::YesNo), Answer::No);
    }

    void theAnswerIsTheButton()
    {
        const auto [buttons, click, answer] = fetched<int, int, int>();
        whenShown<QMessageBox>([click](QMessageBox* box) {
            if (click)
                QTest::mouseClick(box->button(QMessageBox::StandardButton(click)), Qt::LeftButton);
            else
                QTest::keyClick(box, Qt::Key_Escape);
        });
        const auto given = QtMessageBoxes().show({}, {}, MessageBoxes::Icon::Question, Buttons(buttons));
        QCOMPARE(int(given), answer);
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

    void aLongTextStaysOnTheScreen()
    {
        const QString text = QString("line\n").repeated(2000);
        whenShown<QMessageBox>([text](QMessageBox* box) {
            QVERIFY(box->text().size() < 2000);
            QCOMPARE(box->detailedText(), text);
            box->accept();
        });
        QtMessageBoxes().information("Title", text);
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
