#include "arrowlayer.h"
#include "arrowplacer.h"
#include "twips.h"
#include "voreldirection.h"
#include "vorelmodule.h"

#include <QTest>

#include <limits>

class tst_ArrowPlacer : public QObject
{
    Q_OBJECT

private slots:
    void leadsFromEdgeToEdge_data();
    void leadsFromEdgeToEdge();
    void farOffModuleDrawnWithinReach_data();
    void farOffModuleDrawnWithinReach();
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
    using P = QPointF;
    QTest::newRow("target-below-leaves-bottom") << P(1215, 675) << P(1215, 3870) << false;
    QTest::newRow("target-above-not-reversed") << P(1215, 3870) << P(1215, 675) << false;
    QTest::newRow("diagonal-to-compact-uses-its-size") << P(500.5, 500) << P(5000, 4000.2) << true;
}

void tst_ArrowPlacer::leadsFromEdgeToEdge()
{
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    QFETCH(bool, toCompact);
    QWidget canvas;
    VorelModule *a = moduleAt(&canvas, 2, from);
    VorelModule *b = moduleAt(&canvas, 3, to, toCompact);
    VorelDirection arrow(1);
    ArrowPlacer::Place(a, b, &arrow);

    const QRectF boxA(a->Left(), a->Top(), a->Width(), a->Height());
    const QRectF boxB(b->Left(), b->Top(), b->Width(), b->Height());
    QVERIFY2(onBorder(boxA, arrow.startPoint()), "the line must leave from the first box's edge");
    QVERIFY2(onBorder(boxB, arrow.endPoint()), "the line must end at the second box's edge");
    // It points from the first module to the second, on the line of centres.
    const QPointF d = boxB.center() - boxA.center();
    const QPointF s = arrow.endPoint() - arrow.startPoint();
    QVERIFY(QPointF::dotProduct(d, s) > 0);
    QVERIFY(qAbs(d.x() * s.y() - d.y() * s.x()) < 0.1 * (qAbs(d.x()) + qAbs(d.y())));
}

void tst_ArrowPlacer::farOffModuleDrawnWithinReach_data()
{
    QTest::addColumn<float>("left");
    QTest::addColumn<float>("top");
    constexpr float Largest = std::numeric_limits<float>::max();
    QTest::newRow("far-up-left-no-int-overflow") << -3.4e38f << -3.4e38f;
    QTest::newRow("far-down-right-not-flipped") << 3.4e38f << 3.4e38f;
    QTest::newRow("largest-floats-either-way") << Largest << -Largest;
    QTest::newRow("just-beyond-int-pixels") << 4.0e10f << -4.0e10f;
    QTest::newRow("far-left-less-far-up-leaves-shown-box") << -3.4e38f << -1.0e30f;
}

// A position from a file may be any float: the module keeps it, is shown
// towards it within what Qt can draw, and its arrows stay small grips.
void tst_ArrowPlacer::farOffModuleDrawnWithinReach()
{
    QFETCH(float, left);
    QFETCH(float, top);
    QWidget canvas;
    canvas.resize(400, 300);
    VorelModule *far = moduleAt(&canvas, 2, QPointF(left, top));
    VorelModule *near = moduleAt(&canvas, 3, QPointF(1500, 1500));
    ArrowLayer layer(&canvas);
    VorelDirection out(1, &layer);
    VorelDirection back(2, &layer);
    VorelDirection loop(3, &layer);
    ArrowPlacer::Place(far, near, &out);
    ArrowPlacer::Place(near, far, &back);
    ArrowPlacer::Place(far, far, &loop);
    for (VorelDirection *arrow : {&out, &back, &loop})
        arrow->setVisible(true);
    canvas.show();
    QVERIFY(!canvas.grab().isNull());

    QCOMPARE(far->Left(), left);
    QCOMPARE(far->Top(), top);
    // Shown off the canvas on the side it lies, within Qt's widget range.
    QVERIFY2((far->x() < 0) == (left < 0) && (far->y() < 0) == (top < 0),
             qPrintable(QString("shown at %1, %2").arg(far->x()).arg(far->y())));
    const QRect range(-QWIDGETSIZE_MAX / 2, -QWIDGETSIZE_MAX / 2, QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    QVERIFY(range.contains(far->geometry()));
    for (VorelDirection *arrow : {&out, &back, &loop}) {
        QVERIFY(range.contains(arrow->geometry()));
        QVERIFY2(arrow->grip().rectCount() <= 150, "the grip must stay a few bands");
    }
    // The arrows run between the boxes as they are shown, along the line of
    // their centres (within the float's precision out there).
    const QRectF farShown(QPointF(far->pos()) * Twips::PerPixel,
                          QSizeF(far->Width(), far->Height()));
    const QRectF nearBox(near->Left(), near->Top(), near->Width(), near->Height());
    const QLineF centres(farShown.center(), nearBox.center());
    auto onCentreLine = [&centres](QPointF p) {
        const QPointF d = centres.p2() - centres.p1();
        const QPointF v = p - centres.p1();
        return qAbs(d.x() * v.y() - d.y() * v.x()) / centres.length() < 32;
    };
    QVERIFY(farShown.adjusted(-16, -16, 16, 16).contains(out.startPoint()));
    QVERIFY(nearBox.adjusted(-16, -16, 16, 16).contains(out.endPoint()));
    QVERIFY(onCentreLine(out.endPoint()));
    QVERIFY(onCentreLine(back.startPoint()));
}

QTEST_MAIN(tst_ArrowPlacer)
#include "tst_arrowplacer.moc"
