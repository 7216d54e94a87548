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

QTEST_MAIN(tst_VorelDirection)
#include "tst_voreldirection.moc"
