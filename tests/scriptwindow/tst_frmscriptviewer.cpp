#include "frmscriptviewer.h"

#include "commondialog.h"
#include "messagerecorder.h"
#include "programfolder.h"
#include "scriptconstants.h"
#include "selectedmoduletype.h"
#include "voreldirection.h"
#include "vorelmodule.h"

#include <QScrollBar>
#include <QTest>

#include <cmath>
#include <memory>

// The canvas and the window's life: placing, dragging, deleting, closing and
// scrolling, through the real widgets.
class tst_frmScriptViewer : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void placesIntoLowestHole_data();
    void placesIntoLowestHole();
    void canvasReleasePlacesArmedTool_data();
    void canvasReleasePlacesArmedTool();
    void dragMovesModuleAndArrows_data();
    void dragMovesModuleAndArrows();
    void deletePaths_data();
    void deletePaths();
    void closeQuestion_data();
    void closeQuestion();
    void scrollBarArithmetic_data();
    void scrollBarArithmetic();

private:
    std::unique_ptr<frmScriptViewer> shownWindow();
    VorelModule *module(frmScriptViewer &w, qint16 i) { return w.cmVorelModule().at(i); }
    // A module 2 on the canvas, linked Connected -> 2 -> End Call.
    void linkThrough(frmScriptViewer &w, qint16 middle);

    std::unique_ptr<ProgramFolder> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};

void tst_frmScriptViewer::init()
{
    m_folder = std::make_unique<ProgramFolder>();
    QVERIFY(m_folder->isValid());
    m_messages = std::make_unique<MessageRecorder>();
    ivr::setSelectedModuleType(0);
}

void tst_frmScriptViewer::cleanup()
{
    ivr::CommonDialog::clearTestAnswer();
    m_messages.reset();
    m_folder.reset();
}

std::unique_ptr<frmScriptViewer> tst_frmScriptViewer::shownWindow()
{
    auto w = std::make_unique<frmScriptViewer>();
    w->setWindowTitle(QStringLiteral("IVR Script 1"));
    w->resize(700, 500);
    w->show();
    if (!QTest::qWaitForWindowExposed(w.get()))
        return nullptr;
    return w;
}

void tst_frmScriptViewer::linkThrough(frmScriptViewer &w, qint16 middle)
{
    // What a dialog and its completion leave behind, made by hand: the
    // exits, the cells and the arrows.
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

void tst_frmScriptViewer::placesIntoLowestHole_data()
{
    QTest::addColumn<int>("placed");
    QTest::addColumn<QList<int>>("deleted");
    QTest::addColumn<int>("expected");
    QTest::newRow("appends-when-no-hole") << 3 << QList<int>{} << 5;
    QTest::newRow("hole-reused-before-append") << 3 << QList<int>{3} << 3;
    QTest::newRow("lowest-of-two-holes") << 4 << QList<int>{5, 3} << 3;
    QTest::newRow("top-deleted-index-comes-back") << 3 << QList<int>{4} << 4;
}

void tst_frmScriptViewer::placesIntoLowestHole()
{
    QFETCH(int, placed);
    QFETCH(QList<int>, deleted);
    QFETCH(int, expected);
    frmScriptViewer w;
    for (int i = 0; i < placed; ++i)
        w.AddModule(3, 3000 + 100 * i, 2000);
    for (int index : deleted) {
        m_messages->answer(QMessageBox::Yes);
        w.RemoveModule(qint16(index));
    }
    // A renamed module does not lend its name to the one placed in its hole.
    if (w.cmVorelModule().exists(2))
        w.cmVorelModule().at(2)->moduleData()->setName(QStringLiteral("Renamed"));

    QCOMPARE(w.NextFreeModule(), qint16(expected));
    w.AddModule(4, 5000.5f, 6000.25f);
    VorelModule *added = module(w, qint16(expected));
    QCOMPARE(added->Caption(), QString::number(expected));
    QCOMPARE(added->ModuleType(), 4);
    QCOMPARE(added->Left(), 5000.5f);
    QCOMPARE(added->Top(), 6000.25f);
    QVERIFY(added->isVisibleTo(&w));
    QVERIFY(w.DrawLine().ModuleExist(qint16(expected)));
}

void tst_frmScriptViewer::canvasReleasePlacesArmedTool_data()
{
    QTest::addColumn<int>("tool");
    QTest::addColumn<int>("modulesAfter");
    QTest::newRow("select-tool-places-nothing") << 0 << 2;
    QTest::newRow("type-one-tool-places-nothing") << 1 << 2;
    QTest::newRow("play-tool-places-at-pointer") << 3 << 3;
}

void tst_frmScriptViewer::canvasReleasePlacesArmedTool()
{
    QFETCH(int, tool);
    QFETCH(int, modulesAfter);
    auto w = shownWindow();
    QVERIFY(w);
    ivr::setSelectedModuleType(qint16(tool));
    QTest::mouseClick(w->picMain(), Qt::LeftButton, {}, QPoint(400, 60));
    QCOMPARE(w->cmVorelModule().count(), modulesAfter);
    QCOMPARE(w->Changed(), modulesAfter == 3);
    if (modulesAfter == 3) {
        QCOMPARE(module(*w, 2)->Left(), 6000.0f);
        QCOMPARE(module(*w, 2)->Top(), 900.0f);
    }
}

void tst_frmScriptViewer::dragMovesModuleAndArrows_data()
{
    QTest::addColumn<QString>("dropOn");
    QTest::addColumn<bool>("moves");
    QTest::newRow("drop-on-bare-canvas-moves") << "canvas" << true;
    QTest::newRow("drop-on-another-module-lands-in-canvas-coordinates") << "module" << true;
    QTest::newRow("plain-click-is-a-drop-in-place") << "self" << false;
    QTest::newRow("release-over-scroll-bar-moves-nothing") << "scrollbar" << false;
}

void tst_frmScriptViewer::dragMovesModuleAndArrows()
{
    QFETCH(QString, dropOn);
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
    QWidget *target = w->picMain();
    QPoint at(500, 300);
    if (dropOn == "module") {
        target = module(*w, 1);
        at = QPoint(30, 40);
    } else if (dropOn == "self") {
        target = m;
        at = grab;
    } else if (dropOn == "scrollbar") {
        target = w->scrlVert();
        at = QPoint(5, 50);
    }
    // The pressed module holds the mouse until the button comes up, so the
    // release reaches it wherever the pointer is.
    const QPoint release = m->mapFromGlobal(target->mapToGlobal(at));
    QTest::mouseMove(m, release);
    QTest::mouseRelease(m, Qt::LeftButton, {}, release);

    if (dropOn == "canvas") {
        QCOMPARE(m->Left(), (500 - 20) * 15.0f);
        QCOMPARE(m->Top(), (300 - 10) * 15.0f);
    } else if (dropOn == "module") {
        QCOMPARE(m->Left(), module(*w, 1)->Left() + (30 - 20) * 15.0f);
        QCOMPARE(m->Top(), module(*w, 1)->Top() + (40 - 10) * 15.0f);
    } else {
        QCOMPARE(m->Left(), 3007.5f);
        QCOMPARE(m->Top(), 2000.25f);
    }
    QCOMPARE(in->endPoint() != inEnd, moves);
    QCOMPARE(out->startPoint() != outStart, moves);
    QCOMPARE(w->Changed(), dropOn != "scrollbar");
}

void tst_frmScriptViewer::deletePaths_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("answer");
    QTest::addColumn<QString>("question");
    QTest::addColumn<bool>("gone");
    auto row = [](const char *name, auto... v) {
        (QTest::newRow(name) << ... << v);
    };
    const int yes = QMessageBox::Yes;
    const char *ask2 = "Do you want to delete module [ 2 ]";
    const char *askEnd = "Do you want to delete module [ End Call ]";
    row("menu-delete-of-connected-asks-nothing", "menu", 0, yes, "", false);
    row("request-on-end-call-asks-then-keeps", "request", 1, yes, askEnd, false);
    row("menu-delete-answered-no-keeps", "menu", 2, int(QMessageBox::No), ask2, false);
    row("menu-delete-removes-links-both-ways", "menu", 2, yes, ask2, true);
    row("control-request-removes-links-both-ways", "request", 2, yes, ask2, true);
}

void tst_frmScriptViewer::deletePaths()
{
    QFETCH(QString, path);
    QFETCH(int, index);
    QFETCH(int, answer);
    QFETCH(QString, question);
    QFETCH(bool, gone);
    auto w = shownWindow();
    QVERIFY(w);
    w->AddModule(3, 3000, 3000);
    w->AddModule(3, 6000, 3000); // keeps 2 below the top, where a delete writes -1
    linkThrough(*w, 2);
    const qint16 in = w->DrawLine().LineMatrix(0, 2);
    const qint16 out = w->DrawLine().LineMatrix(2, 1);
    VorelModule *m = module(*w, qint16(index));
    m_messages->answer(QMessageBox::StandardButton(answer));
    if (path == "menu") {
        m->setFocus();
        QTRY_COMPARE(w->focusWidget(), m);
        w->DeleteModule();
    } else {
        m->deleteAction()->trigger();
        QTRY_COMPARE(m_messages->count(), 1);
    }
    QCoreApplication::processEvents();
    QCOMPARE(m_messages->count(), question.isEmpty() ? 0 : 1);
    if (!question.isEmpty()) {
        QCOMPARE(m_messages->lastText(), question);
        QCOMPARE(m_messages->messages().last().icon, QMessageBox::Question);
        QCOMPARE(m_messages->messages().last().buttons, QMessageBox::Yes | QMessageBox::No);
    }
    QCOMPARE(w->cmVorelModule().exists(qint16(index)), !gone);
    QVERIFY(!w->Changed());
    QCOMPARE(w->VorelDirection1().exists(in) || w->VorelDirection1().exists(out), !gone);
    if (!gone)
        return;
    QCOMPARE(w->DrawLine().LineMatrix(0, 2), qint16(-1));
    QCOMPARE(w->DrawLine().LineMatrix(2, 1), qint16(-1));
    // The exit that named it stays, stale, for the dialog or the next open.
    QCOMPARE(module(*w, 0)->moduleData()->definition().NextModule(), QStringLiteral("[2]"));
    // A new module fills the hole with a clean row and column.
    w->AddModule(5, 100, 100);
    QCOMPARE(w->DrawLine().LineMatrix(0, 2), qint16(0));
    QCOMPARE(w->DrawLine().LineMatrix(2, 1), qint16(0));
}

void tst_frmScriptViewer::closeQuestion_data()
{
    QTest::addColumn<bool>("edited");
    QTest::addColumn<bool>("named");
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("saveDialogCancelled");
    QTest::addColumn<bool>("closes");
    QTest::addColumn<bool>("written");
    auto row = [](const char *name, auto... v) {
        (QTest::newRow(name) << ... << v);
    };
    const int no = QMessageBox::No, cancel = QMessageBox::Cancel, yes = QMessageBox::Yes;
    row("unchanged-closes-without-question", false, false, 0, false, true, false);
    row("no-discards", true, true, no, false, true, false);
    row("cancel-keeps-open", true, true, cancel, false, false, false);
    row("yes-on-named-saves-and-stays-open", true, true, yes, false, false, true);
    row("yes-on-unnamed-then-cancelled-dialog-closes", true, false, yes, true, true, false);
}

void tst_frmScriptViewer::closeQuestion()
{
    QFETCH(bool, edited);
    QFETCH(bool, named);
    QFETCH(int, answer);
    QFETCH(bool, saveDialogCancelled);
    QFETCH(bool, closes);
    QFETCH(bool, written);
    const QString file = m_folder->file(QStringLiteral("named.ivr"));
    ivr::CommonDialog::setTestAnswer(
            [&](const ivr::CommonDialog &, ivr::CommonDialog::Mode) -> std::optional<QString> {
                if (saveDialogCancelled)
                    return std::nullopt;
                return file;
            });
    auto w = shownWindow();
    QVERIFY(w);
    if (named)
        w->setFileName(file);
    if (edited)
        QTest::mouseClick(module(*w, 0), Qt::LeftButton, {}, QPoint(5, 5));
    QCOMPARE(w->Changed(), edited);
    if (answer)
        m_messages->answer(QMessageBox::StandardButton(answer));

    QCOMPARE(w->close(), closes);
    QCOMPARE(m_messages->count(), edited ? 1 : 0);
    if (edited) {
        QCOMPARE(m_messages->lastText(),
                 QStringLiteral("Do you want to save changes you made to IVR Script 1"));
        QCOMPARE(m_messages->messages().last().buttons,
                 QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    }
    QCOMPARE(QFile::exists(file), written);
    if (!closes && written) {
        // Saved and clean: the second close goes through without a question.
        QVERIFY(w->close());
        QCOMPARE(m_messages->count(), 1);
    }
}

void tst_frmScriptViewer::scrollBarArithmetic_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("inside");
    QTest::newRow("horizontal-steps-from-vertical-maximum") << QSize(535, 420) << true;
    QTest::newRow("negative-maximum-keeps-canvas-in-corner") << QSize(6000, 4000) << false;
}

void tst_frmScriptViewer::scrollBarArithmetic()
{
    QFETCH(QSize, size);
    QFETCH(bool, inside);
    frmScriptViewer w;
    w.resize(size);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    // Maxima in tenths of twips from the outer size, rounded half to even;
    // both bars step by a hundredth and a tenth of the vertical one.
    const QSize outer = w.frameGeometry().size();
    const int vertMax = qMax(0, int(std::nearbyint((54645 - outer.height() * 15.0) / 10)));
    const int horiMax = qMax(0, int(std::nearbyint((85200 - outer.width() * 15.0) / 10)));
    const int smallStep = int(std::nearbyint(vertMax / 100.0));
    const int largeStep = int(std::nearbyint(vertMax / 10.0));
    QCOMPARE(vertMax > 0, inside);
    QVERIFY(!inside || horiMax / 100 != smallStep);
    QCOMPARE(w.scrlVert()->maximum(), vertMax);
    QCOMPARE(w.scrlHori()->maximum(), horiMax);
    QCOMPARE(w.scrlVert()->minimum(), 0);
    QCOMPARE(w.scrlHori()->singleStep(), smallStep);
    QCOMPARE(w.scrlHori()->pageStep(), largeStep);
    QCOMPARE(w.scrlVert()->singleStep(), smallStep);
    QCOMPARE(w.scrlVert()->x() + w.scrlVert()->width(), size.width());
    QCOMPARE(w.scrlHori()->y() + w.scrlHori()->height(), size.height());
    QCOMPARE(w.picMain()->pos(), QPoint(0, 0));

    if (vertMax > 0) {
        // A value is tenths of canvas twips: 150 moves the canvas 1500 twips.
        w.scrlHori()->setValue(150);
        w.scrlVert()->setValue(300);
        QCOMPARE(w.picMain()->pos(), QPoint(-100, -200));
    }
}

QTEST_MAIN(tst_frmScriptViewer)
#include "tst_frmscriptviewer.moc"
