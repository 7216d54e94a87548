#include "controlarray.h"

#include <QTest>
#include <QWidget>

class tst_ControlArray : public QObject
{
    Q_OBJECT

private slots:
    void boundsAndHoles_data();
    void boundsAndHoles();
    void missingElementIsCatchable_data();
    void missingElementIsCatchable();
    void elementLifetime();
};

namespace {

struct Canvas
{
    explicit Canvas(const QList<qint16> &loads = {})
    {
        for (qint16 i : loads)
            array.load(i);
    }
    QWidget parent;
    ControlArray<QWidget> array{[this](qint16 index) {
        auto *w = new QWidget(&parent);
        w->setObjectName(QString::number(index));
        return w;
    }};
};

} // namespace

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
    QTest::newRow("unload-all-empties") << L{0, 1} << L{1, 0} << L{} << 0 << -1;
}

void tst_ControlArray::boundsAndHoles()
{
    QFETCH(QList<qint16>, loads);
    QFETCH(QList<qint16>, unloads);
    QFETCH(QList<qint16>, walk);
    QFETCH(int, lbound);
    QFETCH(int, ubound);
    Canvas canvas(loads);
    for (qint16 i : unloads)
        canvas.array.unload(i);
    QCOMPARE(canvas.array.lbound(), lbound);
    QCOMPARE(canvas.array.ubound(), ubound);
    QCOMPARE(canvas.array.count(), walk.size());
    QCOMPARE(canvas.array.indices(), walk);
    QList<qint16> walked;
    for (QWidget *element : canvas.array)
        walked << element->objectName().toShort();
    QCOMPARE(walked, walk);
}

void tst_ControlArray::missingElementIsCatchable_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("hole-read") << 1;
    QTest::newRow("above-ubound-read") << 7;
    QTest::newRow("negative-read") << -1;
}

void tst_ControlArray::missingElementIsCatchable()
{
    QFETCH(int, index);
    Canvas canvas({0, 1, 2});
    canvas.array.unload(1);
    try {
        canvas.array[qint16(index)];
        QFAIL("reading a missing element must fail");
    } catch (const ivr::IvrError &error) {
        QVERIFY2(error.description().contains(QString::number(index)),
                 qPrintable(error.description()));
    }
    QVERIFY_THROWS_EXCEPTION(ivr::IvrError, canvas.array.unload(qint16(index)));
}

void tst_ControlArray::elementLifetime()
{
    Canvas canvas;
    canvas.parent.show();
    QPointer<QWidget> first = canvas.array.load(4);
    QVERIFY(!first->isVisible()); // loaded elements wait to be placed
    QVERIFY_THROWS_EXCEPTION(ivr::IvrError, canvas.array.load(4));
    QCOMPARE(canvas.array.at(4), first.data());
    canvas.array.unload(4);
    QVERIFY(first.isNull());
    QVERIFY(canvas.array.load(4) != nullptr); // the hole takes a fresh element
    // An element destroyed behind the array's back becomes a hole.
    delete canvas.array.load(5);
    QVERIFY(!canvas.array.exists(5));
    QCOMPARE(canvas.array.ubound(), 4);
}

QTEST_MAIN(tst_ControlArray)
#include "tst_controlarray.moc"
