#include "arrowplacer.h"
#include "voreldirection.h"
#include "vorelmodule.h"

#include <QTest>

class tst_ArrowPlacer : public QObject
{
    Q_OBJECT

private slots:
    void leadsFromEdgeToEdge_data();
    void leadsFromEdgeToEdge();
};

namespace {

bool onBorder(const QRectF &box, QPointF p)
{
    const QRectF outer = box.adjusted(-0.01, -0.01, 0.01, 0.01);
    const QRectF inner = box.adjusted(0.01, 0.01, -0.01, -0.01);
    return outer.contains(p) && !inner.contains(p);
}

VorelModule *moduleAt(QWidget *canvas, qint16 index, QPointF topLeft, bool compact = false)
{
    auto *module = new VorelModule(index, canvas);
    module->Create(3, QString::number(index));
    module->setCompact(compact);
    module->setLeft(float(topLeft.x()));
    module->setTop(float(topLeft.y()));
    return module;
}

} // namespace

void tst_ArrowPlacer::leadsFromEdgeToEdge_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::addColumn<bool>("toCompact");
    QTest::newRow("target-below-leaves-bottom")
            << QPointF(1215, 675) << QPointF(1215, 3870) << false;
    QTest::newRow("target-above-not-reversed")
            << QPointF(1215, 3870) << QPointF(1215, 675) << false;
    QTest::newRow("diagonal-to-compact-uses-its-size")
            << QPointF(500.5, 500) << QPointF(5000, 4000.2) << true;
}

void tst_ArrowPlacer::leadsFromEdgeToEdge()
{
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    QFETCH(bool, toCompact);

    QWidget canvas;
    VorelModule *a = moduleAt(&canvas, 2, from);
    VorelModule *b = moduleAt(&canvas, 3, to, toCompact);
    VorelDirection arrow(1, &canvas);
    ArrowPlacer::Place(a, b, &arrow);

    const QRectF boxA(a->Left(), a->Top(), a->Width(), a->Height());
    const QRectF boxB(b->Left(), b->Top(), b->Width(), b->Height());
    const QPointF start = arrow.startPoint();
    const QPointF end = arrow.endPoint();
    QVERIFY2(onBorder(boxA, start), "the line must leave from the first module's edge");
    QVERIFY2(onBorder(boxB, end), "the line must end at the second module's edge");
    // It points from the first module to the second, on the line of centres.
    const QPointF d = boxB.center() - boxA.center();
    const QPointF s = end - start;
    QVERIFY(QPointF::dotProduct(d, s) > 0);
    QVERIFY(qAbs(d.x() * s.y() - d.y() * s.x()) < 0.1 * (qAbs(d.x()) + qAbs(d.y())));
}

QTEST_MAIN(tst_ArrowPlacer)
#include "tst_arrowplacer.moc"
