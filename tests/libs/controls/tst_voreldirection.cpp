#include "arrowlayer.h"
#include "voreldirection.h"

#include <QScreen>
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
    void unloadedInAnyOrder();
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
    // A module that lets a click through lets it through to the canvas.
    QTest::newRow("click-through-module-over-stroke-is-the-canvas'")
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
    auto *module = new QWidget(&canvas);
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
    QCOMPARE(canvas.presses + canvas.releases, arrowTakesIt ? 0 : 2);
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
    QTest::addColumn<QString>("change");
    QTest::addColumn<bool>("drawnAtFirst");
    QTest::addColumn<bool>("drawnAtSecond");
    // The arrow first runs from (100, 100) to (300, 100) pixels, and may
    // then move to (100, 200) to (300, 200).
    QTest::newRow("shown-arrow-drawn") << "show" << true << false;
    QTest::newRow("hidden-arrow-wiped") << "hide" << false << false;
    QTest::newRow("unloaded-arrow-wiped") << "unload" << false << false;
    QTest::newRow("moved-arrow-wiped-and-drawn-anew") << "move" << false << true;
}

// What the screen shows after each change, not a picture painted anew.
void tst_VorelDirection::drawnByCanvasOnlyWhileShown()
{
    QFETCH(QString, change);
    QFETCH(bool, drawnAtFirst);
    QFETCH(bool, drawnAtSecond);

    QWidget canvas;
    canvas.resize(400, 300);
    QPalette back = canvas.palette();
    back.setColor(QPalette::Window, Background);
    canvas.setPalette(back);
    canvas.setAutoFillBackground(true);
    auto *layer = new ArrowLayer(&canvas);
    auto *arrow = new VorelDirection(1, layer);
    arrow->setLine(QPointF(1500, 1500), QPointF(4500, 1500));
    arrow->setVisible(change != "show");
    canvas.show();
    QVERIFY(QTest::qWaitForWindowExposed(&canvas));
    if (change == "show")
        arrow->setVisible(true);
    else if (change == "hide")
        arrow->setVisible(false);
    else if (change == "unload")
        delete arrow;
    else
        arrow->setLine(QPointF(1500, 3000), QPointF(4500, 3000));
    QCoreApplication::processEvents();

    const QImage screen = canvas.screen()->grabWindow(canvas.winId()).toImage();
    for (const int y : {100, 200}) {
        const bool drawn = y == 100 ? drawnAtFirst : drawnAtSecond;
        QCOMPARE(screen.pixelColor(200, y) != Background, drawn);
        QCOMPARE(screen.pixelColor(295, y) != Background, drawn); // the head
    }
    QCOMPARE(screen.pixelColor(200, 150), Background);
}

// Arrows come and go in any order while a script is edited; each one that
// stays is still drawn.
void tst_VorelDirection::unloadedInAnyOrder()
{
    QWidget canvas;
    canvas.resize(400, 300);
    QPalette back = canvas.palette();
    back.setColor(QPalette::Window, Background);
    canvas.setPalette(back);
    canvas.setAutoFillBackground(true);
    auto *layer = new ArrowLayer(&canvas);
    QList<VorelDirection *> arrows;
    for (int i = 1; i <= 4; ++i) {
        arrows << new VorelDirection(qint16(i), layer);
        arrows.last()->setLine(QPointF(1500, 750 * i), QPointF(4500, 750 * i));
        arrows.last()->setVisible(true);
    }
    delete arrows.at(0);
    delete arrows.at(3);
    delete arrows.at(2);
    const QImage picture = canvas.grab().toImage();
    for (int i = 1; i <= 4; ++i)
        QCOMPARE(picture.pixelColor(200, 50 * i) != Background, i == 2);
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
