#include "screenpointer.h"
#include "selectedmoduletype.h"
#include "shelltesting.h"
#include "statuspanels.h"
#include "toolbox.h"
#include "vorelmodule.h"

#include <QLabel>
#include <QToolBar>

using namespace shelltesting;
using ivr::ToolboxButton;

// The script windows inside the running frame: their size, the Window menu's
// arrangements, the toolbox, the pointer over them and the module named in
// the status bar.
class tst_MdiWindows : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        ivr::setSelectedModuleType(7); // whatever the last run left
        m_s.emplace();
        // A frame with room for several script windows side by side.
        useStoreOf(m_s->folder);
        putStored("MainWidth", "21000");
        putStored("MainHeight", "15000");
        m_frame = start(m_s->folder);
        QVERIFY(m_frame);
        m_frame->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_frame));
    }
    void cleanup()
    {
        m_s.reset();
        ivr::setSelectedModuleType(0);
        ivr::ScreenPointer::set(ivr::ScreenPointer::Default);
    }

    void windowShowsItsClientArea_data()
    {
        QTest::addColumn<QStringList>("entries");
        QTest::newRow("new-after-closing-every-window-collapses")
                << QStringList{"&File|&Close", "&File|&New"};
        QTest::newRow("new-after-tile-collapses")
                << QStringList{"&Window|Tile &Vertical", "&File|&New"};
        QTest::newRow("restored-maximized-window-collapses") << QStringList();
        QTest::newRow("cascaded-window-collapses") << QStringList{"&File|&New", "&Window|&Cascade"};
    }
    void windowShowsItsClientArea()
    {
        QFETCH(QStringList, entries);
        if (entries.isEmpty())
            scriptWindows().constFirst()->showNormal();
        for (const QString &entry : entries)
            choose(entry.section('|', 0, 0), entry.section('|', 1));
        QMdiSubWindow *child = m_frame->mdiArea()->activeSubWindow();
        QVERIFY(child && !child->isMaximized() && child->widget()->isVisible());
        QCOMPARE(child->widget()->size(), ClientArea);
    }

    void arrangement_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::newRow("horizontal-tiles-side-by-side") << "Tile &Horizontal";
        QTest::newRow("vertical-tiles-stacked") << "Tile &Vertical";
        QTest::newRow("cascade-tiles-or-collapses") << "&Cascade";
    }
    void arrangement()
    {
        QFETCH(QString, entry);
        choose("&File", "&New");
        choose("&File", "&New");
        choose("&Window", entry);
        const QRect room = m_frame->mdiArea()->viewport()->rect();
        QList<QRect> cells;
        for (QMdiSubWindow *child : scriptWindows()) {
            QVERIFY(!child->isMaximized() && child->isVisible());
            cells << child->geometry();
        }
        QCOMPARE(cells.size(), 3);
        std::sort(cells.begin(), cells.end(), [](const QRect &a, const QRect &b) {
            return a.top() + a.left() < b.top() + b.left();
        });
        // Tiles fill the area one after the other, each as wide (or high) as
        // the area; cascaded windows keep their size, each down and right of the last.
        const bool across = entry != "Tile &Vertical";
        const auto turn = [across](const QRect &r) {
            return across ? r : QRect(r.y(), r.x(), r.height(), r.width());
        };
        for (int i = 0; i < 3; ++i) {
            const QRect cell = turn(cells.at(i)), area = turn(room);
            if (entry == "&Cascade") {
                QCOMPARE(scriptWindows().at(i)->widget()->size(), ClientArea);
                QVERIFY(i == 0
                        || (cell.left() > cells.at(i - 1).left()
                            && cell.top() > cells.at(i - 1).top()));
                continue;
            }
            QCOMPARE(QPair(cell.left(), cell.width()), QPair(area.left(), area.width()));
            QCOMPARE(cell.top(), i == 0 ? area.top() : turn(cells.at(i - 1)).bottom() + 1);
            QVERIFY(i < 2 || cell.bottom() == area.bottom());
        }
    }

    // Exactly the armed button is pressed and drawn large; the tool above it
    // is clicked first (for Select, the last one), so that over the rows every
    // tool must be released once.
    void toolClickArmsOnlyThatTool_data()
    {
        QTest::addColumn<int>("place"); // from the top
        QTest::addColumn<int>("tool");
        QTest::addColumn<QString>("tip");
        QTest::newRow("select-moved-renamed-or-not-armed-at-start") << 0 << 0 << "Select";
        QTest::newRow("play-moved-or-renamed") << 1 << 3 << "Play Message";
        QTest::newRow("digits-moved-or-renamed") << 2 << 4 << "get Digits";
        QTest::newRow("number-moved-or-renamed") << 3 << 5 << "get Number Buffer";
        QTest::newRow("transfer-moved-or-renamed") << 4 << 6 << "Transfer Call";
        QTest::newRow("record-moved-or-renamed") << 5 << 7 << "Record Message";
        QTest::newRow("query-moved-or-renamed") << 6 << 8 << "Database Query";
        QTest::newRow("condition-not-between-query-and-mail") << 7 << 13 << "Check Condition";
        QTest::newRow("mail-moved-or-renamed") << 8 << 9 << "Send E-Mail";
        QTest::newRow("program-moved-or-renamed") << 9 << 11 << "Run Other Application";
        QTest::newRow("script-moved-or-renamed") << 10 << 12 << "Start Other Vorel IVR Script";
    }
    void toolClickArmsOnlyThatTool()
    {
        QFETCH(int, place);
        QFETCH(int, tool);
        QFETCH(QString, tip);
        ivr::Toolbox *box = m_frame->toolbox();
        QList<ToolboxButton *> buttons = box->findChildren<ToolboxButton *>();
        QCOMPARE(buttons.size(), 11);
        const auto armed = [&](int armed) {
            for (ToolboxButton *button : buttons) {
                const bool on = button->index() == armed;
                if (button->togglePressed() != on
                    || button->pictureSize() != (on ? QSize(88, 44) : QSize(70, 35)))
                    return false;
            }
            return int(ivr::SelectedModuleType()) == armed;
        };
        QVERIFY(armed(0));
        std::sort(buttons.begin(), buttons.end(), [](QWidget *a, QWidget *b) {
            return a->y() < b->y();
        });
        ToolboxButton *button = buttons.at(place);
        QCOMPARE(button->index(), tool);
        QCOMPARE(button->toolTip(), tip);
        QTest::mouseClick(box->cmdModule(ivr::Toolbox::screenOrder().value((place + 10) % 11)),
                          Qt::LeftButton);
        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(armed(tool));
        QTest::mouseClick(button, Qt::LeftButton); // a second click changes nothing
        QVERIFY(armed(tool));
    }

    void pointerFollowsArmedTool_data()
    {
        QTest::addColumn<int>("tool");
        QTest::addColumn<QString>("last"); // where the mouse goes after the canvas
        QTest::addColumn<int>("shape");    // -1: no override
        QTest::newRow("armed-tool-shows-no-cross") << 3 << "" << int(Qt::CrossCursor);
        QTest::newRow("select-shows-no-arrow") << 0 << "" << int(Qt::ArrowCursor);
        QTest::newRow("toolbox-keeps-canvas-pointer") << 3 << "toolbox" << -1;
        QTest::newRow("status-bar-keeps-canvas-pointer") << 3 << "status" << -1;
    }
    void pointerFollowsArmedTool()
    {
        QFETCH(int, tool);
        QFETCH(QString, last);
        QFETCH(int, shape);
        QTest::mouseClick(m_frame->toolbox()->cmdModule(tool), Qt::LeftButton);
        frmScriptViewer *viewer = viewerOf(scriptWindows().constFirst());
        // Two moves: a move to where the pointer already is reaches no one.
        QTest::mouseMove(viewer->picMain(), QPoint(250, 250));
        QTest::mouseMove(viewer->picMain(), QPoint(300, 300));
        if (!last.isEmpty())
            QTest::mouseMove(last == "toolbox"
                                     ? static_cast<QWidget *>(m_frame->toolbox()->cmdModule(5))
                                     : m_frame->sbStatusBar());
        const QCursor *pointer = QGuiApplication::overrideCursor();
        QCOMPARE(pointer ? int(pointer->shape()) : -1, shape);
    }

    void statusBarNamesClickedModule_data()
    {
        QTest::addColumn<QList<int>>("clicks");
        QTest::addColumn<QString>("text");
        QTest::newRow("click-names-nothing") << QList<int>{0} << "Connected";
        // A name is shown as written, never read as markup.
        QTest::newRow("second-click-keeps-first-name-or-markup-read")
                << QList<int>{0, 1} << "<h1>End Call</h1>";
    }
    void statusBarNamesClickedModule()
    {
        QFETCH(QList<int>, clicks);
        QFETCH(QString, text);
        frmScriptViewer *viewer = viewerOf(scriptWindows().constFirst());
        viewer->cmVorelModule().at(1)->setCaption(QStringLiteral("<h1>End Call</h1>"));
        QCOMPARE(m_frame->findChild<QLabel *>("sbStatusBarPanel1")->textFormat(), Qt::PlainText);
        for (int index : clicks)
            QTest::mouseClick(viewer->cmVorelModule().at(qint16(index)), Qt::LeftButton);
        QCOMPARE(m_frame->sbStatusBar()->panelText(), text);
    }

private:
    // The client area of a script window as laid out at design: 8025 x 6300 twips.
    static constexpr QSize ClientArea{535, 420};

    std::optional<Session> m_s;
    frmAppMain *m_frame = nullptr;
};

QTEST_MAIN(tst_MdiWindows)
#include "tst_mdiwindows.moc"
