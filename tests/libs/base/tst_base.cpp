#include "msgbox.h"
#include "screenpointer.h"

#include <QApplication>
#include <QTest>

using namespace ivr;

class tst_Base : public QObject
{
    Q_OBJECT

private slots:
    void pointerNeverPilesUp();
    void messageTitle();
};

void tst_Base::pointerNeverPilesUp()
{
    for (int p : {2, 2, 11})
        ScreenPointer::set(p);
    QCOMPARE(ScreenPointer::current(), 11);
    ScreenPointer::set(0);
    QVERIFY(!QGuiApplication::overrideCursor());
}

void tst_Base::messageTitle()
{
    QStringList titles;
    MsgBox::setHook([&](const MsgBox::Message &m) {
        titles << m.title;
        return QMessageBox::No;
    });
    QCOMPARE(MsgBox::show("Text ", QMessageBox::Critical, QMessageBox::Yes | QMessageBox::No),
             QMessageBox::No);
    MsgBox::show(
            "Text ", QMessageBox::Critical, QMessageBox::Ok, "Brindlewave IVR Script Designer");
    MsgBox::clearHook();
    QCOMPARE(titles, (QStringList{"IVR Script Designer", "Brindlewave IVR Script Designer"}));
}

QTEST_MAIN(tst_Base)
#include "tst_base.moc"
