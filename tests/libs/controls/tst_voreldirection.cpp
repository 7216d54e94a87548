#include "arrowlayer.h"
#include "voreldirection.h"

#include <QScreen>
#include <QSignalSpy>
#include <QTest>

namespace {

const QColor Background(192, 192, 255);

class Canvas : public QWidget
{
public:
    Canvas()
    {
        resize(500, 500);
        QPalette back = palette();
        back.setColor(QPalette::Window, Background);
        setPalette(back);
        setAutoFillBackground(true);
    }
    ArrowLayer *layer = new ArrowLayer(this);
    int presses = 0;
    int releases = 0;

protected:
    void mousePressEvent(QMouseEvent *) override { ++presses; }
    void mouseReleaseEvent(QMouseEvent *) override { ++releases; }
};

} // namespace

class tst_VorelDirection : public QObject
{
    Q_OBJECT

private slots:
    void clickOnStrokeTakenByArrow_data();
    void clickOnStrokeTakenByArrow();
    void drawnByCanvasOnlyWhileShown_data();
    void drawnByCanvasOnlyWhileShown();
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
    auto *module = new QWidget(&canvas);
    module->setGeometry(180, 180, 40, 40);
    module->setVisible(covered);
    VorelDirection arrow(3, canvas.layer);
    arrow.setLine(QPointF(1500, 1500), QPointF(4500, 4500));
    arrow.setVisible(shown);
    canvas.show();
    QVERIFY(QTest::qWaitForWindowExposed(&canvas));
    QVERIFY(arrow.geometry().contains(click));

    QSignalSpy down(&arrow, &VorelDirection::MouseDown);
    QSignalSpy up(&arrow, &VorelDirection::MouseUp);
    // Through the window, so that Qt picks the widget under the point.
    QTest::mouseClick(canvas.windowHandle(), Qt::LeftButton, {}, click);
    QCOMPARE(down.count() + up.count(), arrowTakesIt ? 2 : 0);
    QCOMPARE(canvas.presses + canvas.releases, arrowTakesIt ? 0 : 2);
    if (arrowTakesIt) {
        // In twips inside the arrow's box, as a control reports a click.
        QCOMPARE(down.at(0).at(1).value<Qt::MouseButton>(), Qt::LeftButton);
        const QPoint inside = click - arrow.geometry().topLeft();
        QCOMPARE(down.at(0).at(3).toFloat(), float(inside.x() * 15));
        QCOMPARE(up.at(0).at(4).toFloat(), float(inside.y() * 15));
    }
}

void tst_VorelDirection::drawnByCanvasOnlyWhileShown_data()
{
    QTest::addColumn<QStringList>("changes");
    QTest::addColumn<QList<int>>("drawn"); // the pixel rows that show a line
    // Arrows 1 to 4 run across the canvas at 50, 100, 150 and 200 pixels;
    // all but the second are shown at first.
    using L = QList<int>;
    QTest::newRow("shown-arrow-drawn") << QStringList{"show 2"} << L{50, 100, 150, 200};
    QTest::newRow("hidden-arrow-wiped") << QStringList{"hide 1"} << L{150, 200};
    QTest::newRow("unloaded-arrow-wiped") << QStringList{"unload 1"} << L{150, 200};
    QTest::newRow("moved-arrow-wiped-and-drawn-anew") << QStringList{"move 1"} << L{150, 200, 250};
    QTest::newRow("unloaded-in-any-order-rest-drawn")
            << QStringList{"show 2", "unload 1", "unload 4", "unload 3"} << L{100};
}

// What the screen shows after the changes, not a picture painted anew.
void tst_VorelDirection::drawnByCanvasOnlyWhileShown()
{
    QFETCH(QStringList, changes);
    QFETCH(QList<int>, drawn);
    Canvas canvas;
    QList<VorelDirection *> arrows{nullptr};
    for (int i = 1; i <= 4; ++i) {
        arrows << new VorelDirection(qint16(i), canvas.layer);
        arrows.last()->setLine(QPointF(1500, 750 * i), QPointF(4500, 750 * i));
        arrows.last()->setVisible(i != 2);
    }
    canvas.show();
    QVERIFY(QTest::qWaitForWindowExposed(&canvas));
    for (const QString &change : changes) {
        VorelDirection *arrow = arrows.at(change.back().digitValue());
        if (change.startsWith("show"))
            arrow->setVisible(true);
        else if (change.startsWith("hide"))
            arrow->setVisible(false);
        else if (change.startsWith("unload"))
            delete arrow;
        else
            arrow->setLine(QPointF(1500, 3750), QPointF(4500, 3750));
    }
    QCoreApplication::processEvents();

    const QImage screen = canvas.screen()->grabWindow(canvas.winId()).toImage();
    for (int y = 50; y <= 250; y += 25) {
        QCOMPARE(screen.pixelColor(200, y) != Background, drawn.contains(y));
        QCOMPARE(screen.pixelColor(295, y) != Background, drawn.contains(y)); // the head
    }
}

QTEST_MAIN(tst_VorelDirection)
#include "tst_voreldirection.moc"
