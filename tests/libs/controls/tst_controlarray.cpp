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
    void loadTwiceRefused();
    void loadedElementStartsHidden();
    void unloadDestroysWidget();
    void elementDestroyedElsewhereBecomesHole();
    void walkSkipsHolesInOrder();
};

namespace {

struct Canvas
{
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
    QTest::addColumn<QList<int>>("loads");
    QTest::addColumn<QList<int>>("unloads");
    QTest::addColumn<int>("lbound");
    QTest::addColumn<int>("ubound");
    QTest::addColumn<int>("count");

    QTest::newRow("empty-array-has-no-upper-bound") << QList<int>{} << QList<int>{} << 0 << -1 << 0;
    QTest::newRow("hole-in-middle-keeps-bounds")
            << QList<int>{0, 1, 2, 3} << QList<int>{2} << 0 << 3 << 3;
    QTest::newRow("top-unload-lowers-ubound")
            << QList<int>{0, 1, 2, 3} << QList<int>{3} << 0 << 2 << 3;
    QTest::newRow("top-unload-falls-past-holes")
            << QList<int>{0, 1, 2, 3} << QList<int>{2, 3} << 0 << 1 << 2;
    QTest::newRow("bottom-unload-raises-lbound")
            << QList<int>{0, 1, 2} << QList<int>{0} << 1 << 2 << 2;
    QTest::newRow("sparse-load-bounds-loaded-only")
            << QList<int>{5, 9} << QList<int>{} << 5 << 9 << 2;
    QTest::newRow("unload-all-empties") << QList<int>{0, 1} << QList<int>{1, 0} << 0 << -1 << 0;
}

void tst_ControlArray::boundsAndHoles()
{
    QFETCH(QList<int>, loads);
    QFETCH(QList<int>, unloads);
    QFETCH(int, lbound);
    QFETCH(int, ubound);
    QFETCH(int, count);

    Canvas canvas;
    for (int i : loads)
        canvas.array.load(qint16(i));
    for (int i : unloads)
        canvas.array.unload(qint16(i));
    QCOMPARE(canvas.array.lbound(), lbound);
    QCOMPARE(canvas.array.ubound(), ubound);
    QCOMPARE(canvas.array.count(), count);
    for (int i : unloads)
        QVERIFY(!canvas.array.exists(qint16(i)));
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
    Canvas canvas;
    canvas.array.load(0);
    canvas.array.load(1);
    canvas.array.load(2);
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

void tst_ControlArray::loadTwiceRefused()
{
    Canvas canvas;
    QWidget *first = canvas.array.load(4);
    QVERIFY_THROWS_EXCEPTION(ivr::IvrError, canvas.array.load(4));
    QCOMPARE(canvas.array.at(4), first);
    QCOMPARE(canvas.array.count(), 1);
}

void tst_ControlArray::loadedElementStartsHidden()
{
    Canvas canvas;
    canvas.parent.show();
    QWidget *element = canvas.array.load(0);
    QVERIFY(!element->isVisible());
    QCOMPARE(element->objectName(), "0");
}

void tst_ControlArray::unloadDestroysWidget()
{
    Canvas canvas;
    QPointer<QWidget> element = canvas.array.load(2);
    canvas.array.unload(2);
    QVERIFY(element.isNull());
    // The hole can be loaded again with a fresh element.
    QVERIFY(canvas.array.load(2) != nullptr);
}

void tst_ControlArray::elementDestroyedElsewhereBecomesHole()
{
    Canvas canvas;
    canvas.array.load(0);
    delete canvas.array.load(1);
    QVERIFY(!canvas.array.exists(1));
    QCOMPARE(canvas.array.ubound(), 0);
}

void tst_ControlArray::walkSkipsHolesInOrder()
{
    Canvas canvas;
    for (qint16 i : {3, 0, 1, 2, 5})
        canvas.array.load(i);
    canvas.array.unload(1);
    QStringList walked;
    for (QWidget *element : canvas.array)
        walked << element->objectName();
    QCOMPARE(walked, QStringList({"0", "2", "3", "5"}));
    QCOMPARE(canvas.array.indices(), QList<qint16>({0, 2, 3, 5}));
}

QTEST_MAIN(tst_ControlArray)
#include "tst_controlarray.moc"
