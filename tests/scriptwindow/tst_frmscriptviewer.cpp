#include "scriptwindowtesting.h"

#include "selectedmoduletype.h"
#include "voreldirection.h"

#include <QScopeGuard>
#include <QScrollBar>

#include <cmath>

// The canvas and the window's life through the real widgets.
class tst_frmScriptViewer : public QObject, swt::Fixture
{
    Q_OBJECT

private slots:
    void init()
    {
        ivr::setSelectedModuleType(0);
        QVERIFY(setUp());
    }
    void cleanup() { tearDown(); }
    void placesIntoLowestHole();
    void canvasReleasePlacesArmedTool_data();
    void canvasReleasePlacesArmedTool();
    void dragMovesModuleAndArrows_data();
    void dragMovesModuleAndArrows();
    void deletePaths_data();
    void deletePaths();
    void closeQuestion_data();
    void closeQuestion();
    void scrollBarArithmetic();
    void placingAtHighestIndex();

private:
    std::unique_ptr<frmScriptViewer> shownWindow();
    VorelModule *module(frmScriptViewer &w, qint16 i) { return w.cmVorelModule().at(i); }
    // Connected -> middle -> End Call, as a dialog would leave it.
    void linkThrough(frmScriptViewer &w, qint16 middle);
};

std::unique_ptr<frmScriptViewer> tst_frmScriptViewer::shownWindow()
{
    auto w = std::make_unique<frmScriptViewer>();
    w->setWindowTitle(QStringLiteral("IVR Script 1"));
    w->resize(700, 500);
    w->show();
    return QTest::qWaitForWindowExposed(w.get()) ? std::move(w) : nullptr;
}

void tst_frmScriptViewer::linkThrough(frmScriptViewer &w, qint16 middle)
{
    module(w, 0)->moduleData()->definition().setNextModule(QStringLiteral("[%1]").arg(middle));
    module(w, middle)->moduleData()->definition().setNextModule(QStringLiteral("[End Call]"));
    w.VorelDirection1().unload(1);
    const qint16 in = w.NextFreeArrow();
    w.VorelDirection1().load(in);
    w.DrawLine().setLineMatrix(0, middle, in);
    const qint16 out = w.NextFreeArrow();
    w.VorelDirection1().load(out);
    w.DrawLine().setLineMatrix(middle, 1, out);
    w.DrawLine().setLineMatrix(0, 1, 0);
    w.DrawLine().RedefineModule(middle, w, 3);
}

void tst_frmScriptViewer::placesIntoLowestHole()
{
    frmScriptViewer w;
    for (int i = 0; i < 4; ++i)
        w.AddModule(3, 3000 + 100 * i, 2000);
    for (qint16 index : {5, 3}) {
        m_messages->answer(QMessageBox::Yes);
        w.RemoveModule(index);
    }
    QCOMPARE(w.NextFreeModule(), qint16(3));
    w.AddModule(4, 5000.5f, 6000.25f);
    QCOMPARE(module(w, 3)->Caption(), QStringLiteral("3"));
    QCOMPARE(module(w, 3)->ModuleType(), 4);
    QVERIFY(w.DrawLine().ModuleExist(3));
}

void tst_frmScriptViewer::canvasReleasePlacesArmedTool_data()
{
    QTest::addColumn<int>("tool");
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<bool>("places");
    QTest::newRow("select-tool-places-nothing") << 0 << QPoint(400, 60) << false;
    QTest::newRow("play-tool-places-at-pointer") << 3 << QPoint(400, 60) << true;
    // The first link's arrow runs down between Connected and End Call.
    QTest::newRow("click-on-an-arrow-is-the-arrow's") << 3 << QPoint(160, 191) << false;
}

void tst_frmScriptViewer::canvasReleasePlacesArmedTool()
{
    QFETCH(int, tool);
    QFETCH(QPoint, at);
    QFETCH(bool, places);
    auto w = shownWindow();
    QVERIFY(w);
    ivr::setSelectedModuleType(qint16(tool));
    QTest::mouseClick(w->picMain(), Qt::LeftButton, {}, at);
    QCOMPARE(w->cmVorelModule().count(), places ? 3 : 2);
    QCOMPARE(w->Changed(), places);
    if (places)
        QCOMPARE(QPointF(module(*w, 2)->Left(), module(*w, 2)->Top()), QPointF(6000, 900));
}

void tst_frmScriptViewer::dragMovesModuleAndArrows_data()
{
    QTest::addColumn<bool>("moves");
    QTest::newRow("drop-on-canvas-moves-module-and-arrows") << true;
    QTest::newRow("plain-click-marks-changed-moves-nothing") << false;
}

void tst_frmScriptViewer::dragMovesModuleAndArrows()
{
    QFETCH(bool, moves);
    auto w = shownWindow();
    QVERIFY(w);
    w->AddModule(3, 3007.5f, 2000.25f); // not on a whole pixel
    linkThrough(*w, 2);
    VorelModule *m = module(*w, 2);
    VorelDirection *in = w->VorelDirection1().at(w->DrawLine().LineMatrix(0, 2));
    VorelDirection *out = w->VorelDirection1().at(w->DrawLine().LineMatrix(2, 1));
    const QPointF inEnd = in->endPoint();
    const QPointF outStart = out->startPoint();
    QVERIFY(!w->Changed());

    const QPoint grab(20, 10);
    QTest::mousePress(m, Qt::LeftButton, {}, grab);
    const QPoint release
            = moves ? m->mapFromGlobal(w->picMain()->mapToGlobal(QPoint(500, 300))) : grab;
    QTest::mouseMove(m, release);
    QTest::mouseRelease(m, Qt::LeftButton, {}, release);

    QCOMPARE(QPointF(m->Left(), m->Top()),
             moves ? QPointF((500 - 20) * 15, (300 - 10) * 15) : QPointF(3007.5, 2000.25));
    QCOMPARE(in->endPoint() != inEnd, moves);
    QCOMPARE(out->startPoint() != outStart, moves);
    QVERIFY(w->Changed());
}

void tst_frmScriptViewer::deletePaths_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("fromMenu");
    QTest::addColumn<bool>("deleted");
    QTest::newRow("menu-delete-removes-links-both-ways") << 2 << true << true;
    QTest::newRow("control-request-removes-links-both-ways") << 2 << false << true;
    QTest::newRow("menu-delete-of-connected-silent") << 0 << true << false;
    QTest::newRow("menu-delete-of-end-call-silent") << 1 << true << false;
    QTest::newRow("control-request-of-connected-asks-then-keeps") << 0 << false << false;
    QTest::newRow("control-request-of-end-call-asks-then-keeps") << 1 << false << false;
}

// The standing modules are never deleted: the menu passes them over, their
// own request asks and keeps them.
void tst_frmScriptViewer::deletePaths()
{
    QFETCH(int, index);
    QFETCH(bool, fromMenu);
    QFETCH(bool, deleted);
    auto w = shownWindow();
    QVERIFY(w);
    w->AddModule(3, 3000, 3000);
    w->AddModule(3, 6000, 3000); // keeps 2 below the top, where a delete writes -1
    if (deleted)
        linkThrough(*w, 2);
    const qint16 in = w->DrawLine().LineMatrix(0, 2);
    const qint16 out = w->DrawLine().LineMatrix(2, 1);
    VorelModule *m = module(*w, qint16(index));
    const QString caption = m->Caption();
    m_messages->answer(QMessageBox::Yes);
    if (fromMenu) {
        m->setFocus();
        QTRY_COMPARE(w->focusWidget(), m);
        w->DeleteModule();
    } else {
        m->deleteAction()->trigger();
    }
    const bool asks = deleted || !fromMenu;
    QTRY_COMPARE(m_messages->count(), asks ? 1 : 0);
    if (asks) {
        QCOMPARE(m_messages->lastText(),
                 QStringLiteral("Do you want to delete module [ %1 ]").arg(caption));
        QCOMPARE(m_messages->messages().last().buttons, QMessageBox::Yes | QMessageBox::No);
    }
    QCOMPARE(w->cmVorelModule().exists(qint16(index)), !deleted);
    QCOMPARE(w->DrawLine().ModuleExist(qint16(index)), !deleted);
    if (deleted) {
        QVERIFY(!w->VorelDirection1().exists(in) && !w->VorelDirection1().exists(out));
        QVERIFY(w->DrawLine().LineMatrix(0, 2) == -1 && w->DrawLine().LineMatrix(2, 1) == -1);
    } else {
        QVERIFY(w->DrawLine().LineMatrix(0, 1) == 1 && w->VorelDirection1().exists(1));
    }
}

void tst_frmScriptViewer::closeQuestion_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("closes");
    QTest::addColumn<bool>("written");
    QTest::newRow("no-discards") << int(QMessageBox::No) << true << false;
    QTest::newRow("cancel-keeps-open") << int(QMessageBox::Cancel) << false << false;
    QTest::newRow("yes-saves-and-stays-open") << int(QMessageBox::Yes) << false << true;
}

void tst_frmScriptViewer::closeQuestion()
{
    QFETCH(int, answer);
    QFETCH(bool, closes);
    QFETCH(bool, written);
    const QString file = m_folder->file(QStringLiteral("named.ivr"));
    auto w = shownWindow();
    QVERIFY(w);
    w->setFileName(file);
    QTest::mouseClick(module(*w, 0), Qt::LeftButton, {}, QPoint(5, 5));
    m_messages->answer(QMessageBox::StandardButton(answer));

    QCOMPARE(w->close(), closes);
    QCOMPARE(m_messages->count(), 1);
    QCOMPARE(m_messages->lastText(),
             QStringLiteral("Do you want to save changes you made to IVR Script 1"));
    QCOMPARE(m_messages->messages().last().buttons,
             QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    QCOMPARE(QFile::exists(file), written);
}

void tst_frmScriptViewer::scrollBarArithmetic()
{
    frmScriptViewer w;
    w.resize(535, 420);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    // Maxima in tenths of twips from the outer size, rounded half to even;
    // both bars step by a hundredth and a tenth of the vertical one.
    const QSize outer = w.frameGeometry().size();
    const int vertMax = int(std::nearbyint((54645 - outer.height() * 15.0) / 10));
    const int horiMax = int(std::nearbyint((85200 - outer.width() * 15.0) / 10));
    QVERIFY(horiMax / 100 != int(std::nearbyint(vertMax / 100.0)));
    QCOMPARE(w.scrlVert()->maximum(), vertMax);
    QCOMPARE(w.scrlHori()->maximum(), horiMax);
    QCOMPARE(w.scrlHori()->singleStep(), int(std::nearbyint(vertMax / 100.0)));
    QCOMPARE(w.scrlHori()->pageStep(), int(std::nearbyint(vertMax / 10.0)));
    w.scrlHori()->setValue(150);
    w.scrlVert()->setValue(300);
    QCOMPARE(w.picMain()->pos(), QPoint(-100, -200));
}

// The one test with a full module array; its controls are bare below the
// top, since only the walk over them matters.
void tst_frmScriptViewer::placingAtHighestIndex()
{
    constexpr qint16 top = frmScriptViewer::HighestIndex;
    frmScriptViewer w;
    for (int k = 2; k < top; ++k)
        w.cmVorelModule().load(qint16(k));
    // Each control that dies with events still queued searches the whole queue.
    const auto drain = qScopeGuard([] { QCoreApplication::sendPostedEvents(); });

    QVERIFY(w.AddModule(3, 100, 100));
    QCOMPARE(w.cmVorelModule().at(top)->Caption(), QStringLiteral("32767"));
    QVERIFY(w.DrawLine().ModuleExist(top));
    QCOMPARE(m_messages->count(), 0);

    QVERIFY(!w.AddModule(4, 200, 300));
    QCOMPARE(w.cmVorelModule().at(top)->ModuleType(), 3);
    QCOMPARE(m_messages->count(), 1);
    QCOMPARE(m_messages->messages().last().icon, QMessageBox::Critical);
    QCOMPARE(m_messages->lastText(),
             QStringLiteral("The script holds 32768 modules, the most a script window can "
                            "hold. Nothing was placed."));
}

QTEST_MAIN(tst_frmScriptViewer)
#include "tst_frmscriptviewer.moc"
