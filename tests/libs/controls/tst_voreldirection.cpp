#include "voreldirection.h"

#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

namespace {

// A widget that counts the presses it gets.
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
    void lineKeepsTwipsAndDirection_data();
    void lineKeepsTwipsAndDirection();
};

void tst_VorelDirection::clickBesideStrokeReachesWidgetBeneath_data()
{
    QTest::addColumn<QPoint>("click");
    QTest::addColumn<bool>("arrowTakesIt");

    // The arrow runs from (100, 100) to (300, 300) pixels on the canvas.
    QTest::newRow("box-corner-off-stroke-goes-through") << QPoint(280, 120) << false;
    QTest::newRow("near-stroke-but-off-goes-through") << QPoint(200, 180) << false;
    QTest::newRow("on-stroke-taken-by-arrow") << QPoint(200, 200) << true;
    QTest::newRow("on-head-taken-by-arrow") << QPoint(296, 296) << true;
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
    QSignalSpy arrowUp(arrow, &VorelDirection::MouseUp);
    // Through the window, so that Qt picks the widget under the point.
    QTest::mouseClick(canvas.windowHandle(), Qt::LeftButton, {}, click);
    QCOMPARE(arrowDown.count(), arrowTakesIt ? 1 : 0);
    QCOMPARE(beneath->presses, arrowTakesIt ? 0 : 1);
    QCOMPARE(arrowUp.count(), arrowTakesIt ? 1 : 0);
    if (arrowTakesIt)
        QCOMPARE(arrowUp.first().at(0).value<qint16>(), qint16(3));
}

void tst_VorelDirection::lineKeepsTwipsAndDirection_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::addColumn<int>("arrowcode");

    QTest::newRow("down-right") << QPointF(100.5, 200) << QPointF(900, 1000.25)
                                << int(VorelDirection::FromTopLeft);
    QTest::newRow("down-left-not-reversed")
            << QPointF(900, 200) << QPointF(100, 1000) << int(VorelDirection::FromTopRight);
    QTest::newRow("up-left-not-reversed")
            << QPointF(900, 1000) << QPointF(100, 200) << int(VorelDirection::FromBottomRight);
}

void tst_VorelDirection::lineKeepsTwipsAndDirection()
{
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    QFETCH(int, arrowcode);

    VorelDirection arrow(1);
    arrow.setLine(from, to);
    QCOMPARE(arrow.arrowcode(), arrowcode);
    QCOMPARE(arrow.startPoint(), from);
    QCOMPARE(arrow.endPoint(), to);
    QCOMPARE(arrow.Top(), float(qMin(from.y(), to.y())));
    QCOMPARE(arrow.x2(), float(qAbs(to.x() - from.x())));
    QCOMPARE(arrow.y2(), float(qAbs(to.y() - from.y())));
}

QTEST_MAIN(tst_VorelDirection)
#include "tst_voreldirection.moc"
