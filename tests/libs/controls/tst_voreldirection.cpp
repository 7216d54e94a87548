#include "voreldirection.h"

#include <QSignalSpy>
#include <QTest>

namespace {

class Target : public QWidget
{
public:
    using QWidget::QWidget;
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent *) override { ++presses; }
};

} // namespace

class tst_VorelDirection : public QObject
{
    Q_OBJECT

private slots:
    void clickBesideStrokeReachesWidgetBeneath_data();
    void clickBesideStrokeReachesWidgetBeneath();
    void hugeBoxKeptWithinReach_data();
    void hugeBoxKeptWithinReach();
};

void tst_VorelDirection::clickBesideStrokeReachesWidgetBeneath_data()
{
    QTest::addColumn<QPoint>("click");
    QTest::addColumn<bool>("arrowTakesIt");
    // The arrow runs from (100, 100) to (300, 300) pixels on the canvas.
    QTest::newRow("box-corner-off-stroke-goes-through") << QPoint(280, 120) << false;
    QTest::newRow("on-stroke-taken-by-arrow") << QPoint(200, 200) << true;
}

void tst_VorelDirection::clickBesideStrokeReachesWidgetBeneath()
{
    QFETCH(QPoint, click);
    QFETCH(bool, arrowTakesIt);

    QWidget canvas;
    canvas.resize(500, 500);
    auto *beneath = new Target(&canvas);
    beneath->setGeometry(50, 50, 400, 400);
    auto *arrow = new VorelDirection(3, &canvas);
    arrow->setLine(QPointF(1500, 1500), QPointF(4500, 4500));
    arrow->raise();
    canvas.show();
    QVERIFY(QTest::qWaitForWindowExposed(&canvas));
    QVERIFY(arrow->geometry().contains(click));

    QSignalSpy arrowDown(arrow, &VorelDirection::MouseDown);
    // Through the window, so that Qt picks the widget under the point.
    QTest::mouseClick(canvas.windowHandle(), Qt::LeftButton, {}, click);
    QCOMPARE(arrowDown.count(), arrowTakesIt ? 1 : 0);
    QCOMPARE(beneath->presses, arrowTakesIt ? 0 : 1);
}

void tst_VorelDirection::hugeBoxKeptWithinReach_data()
{
    QTest::addColumn<QRectF>("box"); // left, top, x2, y2 in twips
    QTest::newRow("wide-box-from-origin") << QRectF(0, 0, 3.4e38, 150);
    QTest::newRow("tall-box-from-far-left") << QRectF(-3.4e38, 0, 150, 3.4e38);
    QTest::newRow("box-from-far-down-right") << QRectF(3.4e38, 3.4e38, 3.4e38, 3.4e38);
}

// However large the box an arrow is given, its widget and its mask stay
// within Qt's int geometry and the mask a few bands.
void tst_VorelDirection::hugeBoxKeptWithinReach()
{
    QFETCH(QRectF, box);
    QWidget canvas;
    VorelDirection arrow(1, &canvas);
    arrow.reshape(float(box.left()),
                  float(box.top()),
                  float(box.width()),
                  float(box.height()),
                  VorelDirection::FromTopLeft);
    const QRect range(-QWIDGETSIZE_MAX / 2, -QWIDGETSIZE_MAX / 2, QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    QVERIFY(range.contains(arrow.geometry()));
    QVERIFY(range.contains(arrow.mask().boundingRect().translated(arrow.pos())));
    QVERIFY(arrow.mask().rectCount() <= 150);
}

QTEST_MAIN(tst_VorelDirection)
#include "tst_voreldirection.moc"
