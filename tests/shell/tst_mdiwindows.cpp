#include "messagerecorder.h"
#include "screenpointer.h"
#include "selectedmoduletype.h"
#include "shelltesting.h"
#include "statuspanels.h"
#include "toolbox.h"
#include "vorelmodule.h"

#include <QLabel>
#include <QToolBar>

using namespace shelltesting;

// The script windows inside the running frame: their size, the Window menu's
// arrangements, the pointer over them and the module named in the status bar.
class tst_MdiWindows : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void windowShowsItsClientArea_data();
    void windowShowsItsClientArea();
    void arrangement_data();
    void arrangement();
    void pointerFollowsArmedTool_data();
    void pointerFollowsArmedTool();
    void statusBarNamesClickedModule_data();
    void statusBarNamesClickedModule();

private:
    frmAppMain *startLarge();

    std::unique_ptr<ProgramFolder> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};

// The client area of a script window as laid out at design: 8025 x 6300 twips.
static const QSize ClientArea(535, 420);

void tst_MdiWindows::init()
{
    m_folder = std::make_unique<ProgramFolder>();
    QVERIFY(m_folder->isValid());
    m_messages = std::make_unique<MessageRecorder>();
}

void tst_MdiWindows::cleanup()
{
    discardFrame();
    ivr::setSelectedModuleType(0);
    ivr::ScreenPointer::set(ivr::ScreenPointer::Default);
    m_messages.reset();
    m_folder.reset();
}

// A frame with room for several script windows side by side.
frmAppMain *tst_MdiWindows::startLarge()
{
    useStoreOf(*m_folder);
    putStored("MainWidth", "21000");
    putStored("MainHeight", "15000");
    frmAppMain *frame = start(*m_folder);
    if (frame) {
        frame->activateWindow();
        if (!QTest::qWaitForWindowActive(frame))
            return nullptr;
    }
    return frame;
}

void tst_MdiWindows::windowShowsItsClientArea_data()
{
    QTest::addColumn<QString>("steps");
    QTest::newRow("new-after-closing-every-window-collapses") << "close,new";
    QTest::newRow("new-after-tile-collapses") << "tile,new";
    QTest::newRow("restored-maximized-window-collapses") << "restore";
    QTest::newRow("cascaded-window-collapses") << "new,cascade";
}

void tst_MdiWindows::windowShowsItsClientArea()
{
    QFETCH(QString, steps);
    QVERIFY(startLarge());
    for (const QString &step : steps.split(',')) {
        if (step == "close")
            choose("&File", "&Close");
        else if (step == "new")
            choose("&File", "&New");
        else if (step == "tile")
            choose("&Window", "Tile &Vertical");
        else if (step == "cascade")
            choose("&Window", "&Cascade");
        else if (step == "restore")
            scriptWindows().constFirst()->showNormal();
    }
    QMdiSubWindow *child = frmAppMain::existing()->mdiArea()->activeSubWindow();
    QVERIFY(child);
    QVERIFY(!child->isMaximized());
    QCOMPARE(child->widget()->size(), ClientArea);
    QVERIFY(child->widget()->isVisible());
}

void tst_MdiWindows::arrangement_data()
{
    QTest::addColumn<QString>("entry");
    QTest::newRow("horizontal-tiles-side-by-side") << "Tile &Horizontal";
    QTest::newRow("vertical-tiles-stacked") << "Tile &Vertical";
    QTest::newRow("cascade-tiles-or-collapses") << "&Cascade";
}

void tst_MdiWindows::arrangement()
{
    QFETCH(QString, entry);
    frmAppMain *frame = startLarge();
    QVERIFY(frame);
    choose("&File", "&New");
    choose("&File", "&New");
    choose("&Window", entry);
    const QRect room = frame->mdiArea()->viewport()->rect();
    QList<QRect> cells;
    for (QMdiSubWindow *child : scriptWindows()) {
        QVERIFY(!child->isMaximized() && child->isVisible());
        cells << child->geometry();
    }
    QCOMPARE(cells.size(), 3);
    std::sort(cells.begin(), cells.end(), [](const QRect &a, const QRect &b) {
        return a.top() + a.left() < b.top() + b.left();
    });
    for (int i = 0; i < 3; ++i) {
        const QRect &cell = cells.at(i);
        if (entry == "Tile &Horizontal") {
            // One above the other, each as wide as the area, filling it.
            QCOMPARE(cell.left(), room.left());
            QCOMPARE(cell.width(), room.width());
            QCOMPARE(cell.top(), i == 0 ? room.top() : cells.at(i - 1).bottom() + 1);
            if (i == 2)
                QCOMPARE(cell.bottom(), room.bottom());
        } else if (entry == "Tile &Vertical") {
            QCOMPARE(cell.top(), room.top());
            QCOMPARE(cell.height(), room.height());
            QCOMPARE(cell.left(), i == 0 ? room.left() : cells.at(i - 1).right() + 1);
            if (i == 2)
                QCOMPARE(cell.right(), room.right());
        } else {
            // Each window keeps its size, each one step down and right of the last.
            QCOMPARE(scriptWindows().at(i)->widget()->size(), ClientArea);
            if (i > 0) {
                QVERIFY(cell.left() > cells.at(i - 1).left());
                QVERIFY(cell.top() > cells.at(i - 1).top());
            }
        }
    }
}

void tst_MdiWindows::pointerFollowsArmedTool_data()
{
    QTest::addColumn<int>("tool");
    QTest::addColumn<QString>("last"); // where the mouse goes after the canvas
    QTest::addColumn<int>("shape");    // -1: no override
    QTest::newRow("armed-tool-shows-no-cross") << 3 << "" << int(Qt::CrossCursor);
    QTest::newRow("select-shows-no-arrow") << 0 << "" << int(Qt::ArrowCursor);
    QTest::newRow("toolbox-keeps-canvas-pointer") << 3 << "toolbox" << -1;
    QTest::newRow("status-bar-keeps-canvas-pointer") << 3 << "status" << -1;
}

void tst_MdiWindows::pointerFollowsArmedTool()
{
    QFETCH(int, tool);
    QFETCH(QString, last);
    QFETCH(int, shape);
    frmAppMain *frame = startLarge();
    QVERIFY(frame);
    QTest::mouseClick(frame->toolbox()->cmdModule(tool), Qt::LeftButton);
    QCOMPARE(int(ivr::SelectedModuleType()), tool);
    frmScriptViewer *viewer = viewerOf(scriptWindows().constFirst());
    // Two moves: a move to where the pointer already is reaches no one.
    QTest::mouseMove(viewer->picMain(), QPoint(250, 250));
    QTest::mouseMove(viewer->picMain(), QPoint(300, 300));
    if (last == "toolbox")
        QTest::mouseMove(frame->toolbox()->cmdModule(5));
    else if (last == "status")
        QTest::mouseMove(frame->sbStatusBar());
    const QCursor *pointer = QGuiApplication::overrideCursor();
    QCOMPARE(pointer ? int(pointer->shape()) : -1, shape);
}

void tst_MdiWindows::statusBarNamesClickedModule_data()
{
    QTest::addColumn<QList<int>>("clicks");
    QTest::addColumn<QString>("text");
    QTest::newRow("click-names-nothing") << QList<int>{0} << "Connected";
    QTest::newRow("second-click-keeps-first-name") << QList<int>{0, 1} << "<h1>End Call</h1>";
}

void tst_MdiWindows::statusBarNamesClickedModule()
{
    QFETCH(QList<int>, clicks);
    QFETCH(QString, text);
    frmAppMain *frame = startLarge();
    QVERIFY(frame);
    frmScriptViewer *viewer = viewerOf(scriptWindows().constFirst());
    // A name is shown as written, never read as markup.
    viewer->cmVorelModule().at(1)->setCaption(QStringLiteral("<h1>End Call</h1>"));
    QCOMPARE(frame->findChild<QLabel *>("sbStatusBarPanel1")->textFormat(), Qt::PlainText);
    for (int index : clicks)
        QTest::mouseClick(viewer->cmVorelModule().at(qint16(index)), Qt::LeftButton);
    QCOMPARE(frame->sbStatusBar()->panelText(), text);
}

QTEST_MAIN(tst_MdiWindows)
#include "tst_mdiwindows.moc"
