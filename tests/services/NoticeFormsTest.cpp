#include "contacts/Client.h"
#include "desktop/forms/FormRegistry.h"
#include "desktop/forms/ShowInTrayForm.h"
#include "session/forms/AboutForm.h"

#include "support/RecordingDesktop.h"
#include "support/TestRunner.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

// The windows that only tell something.
class NoticeFormsTest : public QObject
{
    Q_OBJECT

private slots:
    void closeByButtonAndKeys_data();
    void closeByButtonAndKeys();
    void aboutLeadsToTheWebSite_data();
    void aboutLeadsToTheWebSite();

private:
    Form* make(const QString& name);

    Client client_;
    RecordingDesktop world_;
    FormRegistry registry_;
};

Form* NoticeFormsTest::make(const QString& name)
{
    client_.desktop = world_.desktop();
    Form* form = nullptr;
    if (name == "AboutForm")
        form = new AboutForm(client_, registry_);
    else
        form = new ShowInTrayForm(registry_);
    form->show();
    return form;
}

void NoticeFormsTest::closeByButtonAndKeys_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("key"); // 0 clicks the button
    for (const char* name : {"AboutForm", "ShowInTrayForm"})
        for (const int key : {0, int(Qt::Key_Return), int(Qt::Key_Escape)})
            QTest::newRow(qPrintable(QStringLiteral("%1, key %2").arg(QLatin1String(name)).arg(key))) << name << key;
}

void NoticeFormsTest::closeByButtonAndKeys()
{
    QFETCH(QString, name);
    QFETCH(int, key);
    const QPointer<Form> form = make(name);
    QCOMPARE(registry_.find(name), form);
    if (key)
        QTest::keyClick(form, Qt::Key(key));
    else
        QTest::mouseClick(form->findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
    QVERIFY(!registry_.find(name));
    QTRY_VERIFY(!form);
}

void NoticeFormsTest::aboutLeadsToTheWebSite_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<QStringList>("opened");
    QTest::newRow("none configured") << "" << QStringList();
    QTest::newRow("configured") << "www.breloim.example" << QStringList("https://www.breloim.example/");
    QTest::newRow("with quotes") << "a\"><b>.example" << QStringList("https://a\"><b>.example/");
}

void NoticeFormsTest::aboutLeadsToTheWebSite()
{
    QFETCH(QString, host);
    client_.site.WebSite = host;
    const std::unique_ptr<Form> form(make("AboutForm"));
    auto* link = form->findChild<QLabel*>("lblWebSite");
    QCOMPARE(link->isVisible(), !host.isEmpty());
    world_.links.opened.clear();
    if (link->isVisible())
        QTest::mouseClick(link, Qt::LeftButton, {}, QPoint(8, link->height() / 2));
    QTEST(world_.links.opened, "opened");
    QVERIFY(form->findChild<QLabel*>("lblVersion")->text().contains(BRELO_VERSION));
}

BRELO_TEST(NoticeFormsTest)
#include "NoticeFormsTest.moc"
