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
    void selfLinkGetsLoopAtModule();
};

namespace {

bool onBorder(const QRectF &box, QPointF p)
{
    const qreal e = 0.01;
    const bool insideX = p.x() >= box.left() - e && p.x() <= box.right() + e;
    const bool insideY = p.y() >= box.top() - e && p.y() <= box.bottom() + e;
    const bool onX = qAbs(p.x() - box.left()) < e || qAbs(p.x() - box.right()) < e;
    const bool onY = qAbs(p.y() - box.top()) < e || qAbs(p.y() - box.bottom()) < e;
    return insideX && insideY && (onX || onY);
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

    auto row = [](const char *name, auto... v) {
        (QTest::newRow(name) << ... << v);
    };
    using P = QPointF;
    row("target-below-leaves-bottom", P(1215, 675), P(1215, 3870), false);
    row("target-above-not-reversed", P(1215, 3870), P(1215, 675), false);
    row("target-right-leaves-side", P(1000, 1000), P(6000, 1200), false);
    row("diagonal-to-compact-uses-its-size", P(500, 500), P(5000, 4000), true);
    row("position-between-pixels", P(1217.5, 680.2), P(4001.3, 2999.9), false);
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
    QVERIFY(qAbs(d.x() * s.y() - d.y() * s.x()) < 1e-3 * (qAbs(d.x()) + qAbs(d.y())) * 100);
}

void tst_ArrowPlacer::selfLinkGetsLoopAtModule()
{
    QWidget canvas;
    VorelModule *a = moduleAt(&canvas, 2, QPointF(3000, 3000));
    VorelDirection arrow(1, &canvas);
    arrow.hide();
    canvas.show();
    ArrowPlacer::Place(a, a, &arrow);
    QVERIFY(arrow.isHidden()); // showing it is the caller's business
    QCOMPARE(arrow.arrowcode(), int(VorelDirection::Loop));
    const QRectF box(a->Left(), a->Top(), a->Width(), a->Height());
    QVERIFY(onBorder(box, arrow.startPoint()));
    QVERIFY(onBorder(box, arrow.endPoint()));
    QVERIFY(arrow.startPoint() != arrow.endPoint());
}

QTEST_MAIN(tst_ArrowPlacer)
#include "tst_arrowplacer.moc"
