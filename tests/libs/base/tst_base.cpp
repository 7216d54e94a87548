#include "appfolder.h"
#include "msgbox.h"
#include "screenpointer.h"

#include <QApplication>
#include <QTest>

using namespace ivr;

class tst_Base : public QObject
{
    Q_OBJECT

private slots:
    void pointerNeverPilesUp_data();
    void pointerNeverPilesUp();
    void messageTitle_data();
    void messageTitle();
    void appFolderOverride();
};

void tst_Base::pointerNeverPilesUp_data()
{
    QTest::addColumn<QList<int>>("sets");
    QTest::addColumn<int>("expected");
    QTest::addColumn<bool>("overridden");

    QTest::newRow("repeated-cross-cleared-once") << QList<int>{2, 2, 2, 0} << 0 << false;
    QTest::newRow("hourglass-after-clear") << QList<int>{1, 0, 11} << 11 << true;
    QTest::newRow("clear-without-set") << QList<int>{0} << 0 << false;
}

void tst_Base::pointerNeverPilesUp()
{
    QFETCH(QList<int>, sets);
    QFETCH(int, expected);
    QFETCH(bool, overridden);

    for (int p : sets)
        ScreenPointer::set(p);
    QCOMPARE(ScreenPointer::current(), expected);
    QCOMPARE(QGuiApplication::overrideCursor() != nullptr, overridden);
    if (overridden) {
        // One clear must leave no override behind, however often it was set.
        ScreenPointer::set(0);
        QVERIFY(!QGuiApplication::overrideCursor());
    }
}

void tst_Base::messageTitle_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("expected");
    QTest::newRow("no-title-gives-application-title") << QString() << "IVR Script Designer";
    QTest::newRow("caller-names-its-own") << "Brindlewave IVR Script Designer"
                                          << "Brindlewave IVR Script Designer";
}

void tst_Base::messageTitle()
{
    QFETCH(QString, title);
    QFETCH(QString, expected);

    MsgBox::Message seen;
    MsgBox::setHook([&](const MsgBox::Message &m) {
        seen = m;
        return QMessageBox::No;
    });
    const auto answer = MsgBox::show(
            "Text ", QMessageBox::Critical, QMessageBox::Yes | QMessageBox::No, title);
    MsgBox::clearHook();
    QCOMPARE(answer, QMessageBox::No);
    QCOMPARE(seen.title, expected);
    QCOMPARE(seen.text, QString("Text "));
}

void tst_Base::appFolderOverride()
{
    AppFolder::setOverride("/tmp/prog/");
    QCOMPARE(AppFolder::file("Greeting/beep.wav"), QString("/tmp/prog/Greeting/beep.wav"));
    AppFolder::clearOverride();
    QCOMPARE(AppFolder::path(), QCoreApplication::applicationDirPath());
}

QTEST_MAIN(tst_Base)
#include "tst_base.moc"
