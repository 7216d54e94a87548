#include "controlarray.h"

#include <QTest>
#include <QWidget>

class tst_ControlArray : public QObject
{
    Q_OBJECT

private slots:
    void boundsAndHoles_data();
    void boundsAndHoles();
};

void tst_ControlArray::boundsAndHoles_data()
{
    QTest::addColumn<QList<qint16>>("loads");
    QTest::addColumn<QList<qint16>>("unloads");
    QTest::addColumn<QList<qint16>>("walk");
    QTest::addColumn<int>("lbound");
    QTest::addColumn<int>("ubound");
    using L = QList<qint16>;
    QTest::newRow("empty-array-has-no-upper-bound") << L{} << L{} << L{} << 0 << -1;
    QTest::newRow("hole-in-middle-keeps-bounds") << L{0, 1, 2, 3} << L{2} << L{0, 1, 3} << 0 << 3;
    QTest::newRow("top-unload-falls-past-holes") << L{0, 1, 2, 3} << L{2, 3} << L{0, 1} << 0 << 1;
    QTest::newRow("bottom-unload-raises-lbound") << L{0, 1, 2} << L{0} << L{1, 2} << 1 << 2;
    QTest::newRow("walk-in-index-order-not-load-order")
            << L{3, 0, 1, 2, 5} << L{1} << L{0, 2, 3, 5} << 0 << 5;
}

void tst_ControlArray::boundsAndHoles()
{
    QFETCH(QList<qint16>, loads);
    QFETCH(QList<qint16>, unloads);
    QFETCH(QList<qint16>, walk);
    QFETCH(int, lbound);
    QFETCH(int, ubound);
    QWidget parent;
    ControlArray<QWidget> array([&parent](qint16 index) {
        auto *w = new QWidget(&parent);
        w->setObjectName(QString::number(index));
        return w;
    });
    for (qint16 i : loads)
        array.load(i);
    for (qint16 i : unloads)
        array.unload(i);
    QCOMPARE(array.lbound(), lbound);
    QCOMPARE(array.ubound(), ubound);
    QList<qint16> walked;
    for (QWidget *element : array)
        walked << element->objectName().toShort();
    QCOMPARE(walked, walk);

    // Missing elements fail catchably, and a loaded index cannot load twice.
    const qint16 hole = unloads.isEmpty() ? 0 : unloads.first();
    QVERIFY_THROWS_EXCEPTION(ivr::IvrError, array[hole]);
    QVERIFY_THROWS_EXCEPTION(ivr::IvrError, array[qint16(ubound + 1)]);
    QVERIFY_THROWS_EXCEPTION(ivr::IvrError, array.unload(hole));
    if (!walk.isEmpty())
        QVERIFY_THROWS_EXCEPTION(ivr::IvrError, array.load(walk.first()));
    // An element destroyed behind the array's back becomes a hole.
    delete array.load(qint16(ubound + 1));
    QCOMPARE(array.ubound(), ubound);
}

QTEST_MAIN(tst_ControlArray)
#include "tst_controlarray.moc"
