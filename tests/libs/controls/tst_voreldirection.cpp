#include "arrowlayer.h"
#include "voreldirection.h"

#include <QSignalSpy>
#include <QTest>

namespace {

class Canvas : public QWidget
{
public:
    using QWidget::QWidget;
    int presses = 0;
    int releases = 0;

protected:
    void mousePressEvent(QMouseEvent *) override { ++presses; }
    void mouseReleaseEvent(QMouseEvent *) override { ++releases; }
};

const QColor Background(192, 192, 255);

} // namespace

class tst_VorelDirection : public QObject
{
    Q_OBJECT

private slots:
    void clickOnStrokeTakenByArrow_data();
    void clickOnStrokeTakenByArrow();
    void drawnByCanvasOnlyWhileShown_data();
    void drawnByCanvasOnlyWhileShown();
    void hugeBoxKeptWithinReach_data();
    void hugeBoxKeptWithinReach();
};

void tst_VorelDirection::clickOnStrokeTakenByArrow_data()
{
    QTest::addColumn<QPoint>("click");
    QTest::addColumn<bool>("shown");
    QTest::addColumn<bool>("covered");
    QTest::addColumn<bool>("arrowTakesIt");
    // The arrow runs from (100, 100) to (300, 300) pixels on the canvas.
    QTest::newRow("box-corner-off-stroke-goes-to-canvas")
            << QPoint(280, 120) << true << false << false;
    QTest::newRow("on-stroke-taken-by-arrow") << QPoint(200, 200) << true << false << true;
    QTest::newRow("on-head-taken-by-arrow") << QPoint(297, 297) << true << false << true;
    QTest::newRow("hidden-arrow-takes-nothing") << QPoint(200, 200) << false << false << false;
    QTest::newRow("module-over-stroke-keeps-its-click")
            << QPoint(200, 200) << true << true << false;
}

void tst_VorelDirection::clickOnStrokeTakenByArrow()
{
    QFETCH(QPoint, click);
    QFETCH(bool, shown);
    QFETCH(bool, covered);
    QFETCH(bool, arrowTakesIt);

    Canvas canvas;
    canvas.resize(500, 500);
    ArrowLayer layer(&canvas);
    auto *module = new Canvas(&canvas);
    module->setGeometry(180, 180, 40, 40);
    module->setVisible(covered);
    VorelDirection arrow(3, &layer);
    arrow.setLine(QPointF(1500, 1500), QPointF(4500, 4500));
    arrow.setVisible(shown);
    canvas.show();
    QVERIFY(QTest::qWaitForWindowExposed(&canvas));
    QVERIFY(arrow.geometry().contains(click));

    QSignalSpy arrowDown(&arrow, &VorelDirection::MouseDown);
    QSignalSpy arrowUp(&arrow, &VorelDirection::MouseUp);
    // Through the window, so that Qt picks the widget under the point.
    QTest::mouseClick(canvas.windowHandle(), Qt::LeftButton, {}, click);
    QCOMPARE(arrowDown.count(), arrowTakesIt ? 1 : 0);
    QCOMPARE(arrowUp.count(), arrowTakesIt ? 1 : 0);
    QCOMPARE(canvas.presses + canvas.releases, arrowTakesIt || covered ? 0 : 2);
    QCOMPARE(module->presses, covered ? 1 : 0);
    if (arrowTakesIt) {
        // In twips inside the arrow's box, as a control reports a click.
        QCOMPARE(arrowDown.at(0).at(1).value<Qt::MouseButton>(), Qt::LeftButton);
        const QPoint inside = click - arrow.geometry().topLeft();
        QCOMPARE(arrowDown.at(0).at(3).toFloat(), float(inside.x() * 15));
        QCOMPARE(arrowUp.at(0).at(4).toFloat(), float(inside.y() * 15));
    }
}

void tst_VorelDirection::drawnByCanvasOnlyWhileShown_data()
{
    QTest::addColumn<bool>("shown");
    QTest::addColumn<bool>("unloaded");
    QTest::addColumn<bool>("drawn");
    QTest::newRow("shown-arrow-drawn") << true << false << true;
    QTest::newRow("hidden-arrow-not-drawn") << false << false << false;
    QTest::newRow("unloaded-arrow-gone-from-canvas") << true << true << false;
}

void tst_VorelDirection::drawnByCanvasOnlyWhileShown()
{
    QFETCH(bool, shown);
    QFETCH(bool, unloaded);
    QFETCH(bool, drawn);

    QWidget canvas;
    canvas.resize(400, 300);
    QPalette back = canvas.palette();
    back.setColor(QPalette::Window, Background);
    canvas.setPalette(back);
    canvas.setAutoFillBackground(true);
    auto *layer = new ArrowLayer(&canvas);
    auto *arrow = new VorelDirection(1, layer);
    arrow->setLine(QPointF(1500, 1500), QPointF(4500, 1500)); // (100, 100) to (300, 100)
    canvas.show();
    QVERIFY(QTest::qWaitForWindowExposed(&canvas));
    arrow->setVisible(shown);
    if (unloaded)
        delete arrow;

    const QImage picture = canvas.grab().toImage();
    QCOMPARE(picture.pixelColor(200, 100) != Background, drawn);
    QCOMPARE(picture.pixelColor(295, 100) != Background, drawn); // the head
    QCOMPARE(picture.pixelColor(200, 120), Background);
}

void tst_VorelDirection::hugeBoxKeptWithinReach_data()
{
    QTest::addColumn<QRectF>("box"); // left, top, x2, y2 in twips
    QTest::newRow("wide-box-from-origin") << QRectF(0, 0, 3.4e38, 150);
    QTest::newRow("tall-box-from-far-left") << QRectF(-3.4e38, 0, 150, 3.4e38);
    QTest::newRow("box-from-far-down-right") << QRectF(3.4e38, 3.4e38, 3.4e38, 3.4e38);
}

// However large the box an arrow is given, its picture and its grip stay
// within Qt's int geometry and the grip a few bands.
void tst_VorelDirection::hugeBoxKeptWithinReach()
{
    QFETCH(QRectF, box);
    VorelDirection arrow(1);
    arrow.reshape(float(box.left()),
                  float(box.top()),
                  float(box.width()),
                  float(box.height()),
                  VorelDirection::FromTopLeft);
    const QRect range(-QWIDGETSIZE_MAX / 2, -QWIDGETSIZE_MAX / 2, QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    QVERIFY(range.contains(arrow.geometry()));
    QVERIFY(range.contains(arrow.grip().boundingRect()));
    QVERIFY(arrow.grip().rectCount() <= 150);
}

QTEST_MAIN(tst_VorelDirection)
#include "tst_voreldirection.moc"
