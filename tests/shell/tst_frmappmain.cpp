#include "commondialog.h"
#include "frmscriptviewer.h"
#include "messagerecorder.h"
#include "selectedmoduletype.h"
#include "shelltesting.h"
#include "statuspanels.h"
#include "toolbox.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <QToolBar>
#include <QtTest>

using namespace shelltesting;

class tst_frmAppMain : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void emptyStoreGivesDefaults();
    void minimizedUnloadKeepsGeometry();
    void geometrySameAfterTenRuns();
    void commandsWithoutModuleDoNothing_data();
    void commandsWithoutModuleDoNothing();
    void frameCloseStopsAtRefusingWindow();

private:
    QList<QMdiSubWindow *> children() const
    {
        return frmAppMain::existing()->mdiArea()->subWindowList(QMdiArea::CreationOrder);
    }

    std::unique_ptr<ProgramFolder> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
    int m_dialogs = 0;
};

void tst_frmAppMain::init()
{
    m_folder = std::make_unique<ProgramFolder>();
    QVERIFY(m_folder->isValid());
    m_messages = std::make_unique<MessageRecorder>();
    m_dialogs = 0;
    ivr::CommonDialog::setTestAnswer([this](const ivr::CommonDialog &, ivr::CommonDialog::Mode) {
        ++m_dialogs;
        return std::optional<QString>();
    });
}

void tst_frmAppMain::cleanup()
{
    discardFrame();
    ivr::CommonDialog::clearTestAnswer();
    m_messages.reset();
    m_folder.reset();
}

void tst_frmAppMain::emptyStoreGivesDefaults()
{
    frmAppMain *frame = start(*m_folder);
    QVERIFY(frame);
    QCOMPARE(frame->pos(), QPoint(67, 67));   // 1000 twips
    QCOMPARE(frame->size(), QSize(433, 433)); // 6500 twips
    QVERIFY(frame->XPSideMenu1()->isVisible());
    QVERIFY(frame->XPSideMenu2()->isVisible());
    QVERIFY(frame->sbStatusBar()->isVisible());
    QVERIFY(children().constFirst()->isMaximized());
}

void tst_frmAppMain::minimizedUnloadKeepsGeometry()
{
    useStoreOf(*m_folder);
    putStored("MainLeft", "3000");
    frmAppMain *frame = start(*m_folder);
    QVERIFY(frame);
    frame->showMinimized();
    frame->command("mnuViewToolbar")->trigger();
    QVERIFY(closeFrame());
    QCOMPARE(stored("MainLeft"), QStringLiteral("3000"));
    QCOMPARE(stored("MainTop"), QString());
    QCOMPARE(stored("ShowToolBar"), QStringLiteral("False"));
    // The hidden bar stays hidden at the next start.
    frame = start(*m_folder);
    QVERIFY(frame);
    QVERIFY(!frame->XPSideMenu2()->isVisible());
}

void tst_frmAppMain::geometrySameAfterTenRuns()
{
    // Off the screen's left edge: applied as it stands, never pulled back.
    useStoreOf(*m_folder);
    putStored("MainLeft", "-1500");
    putStored("MainTop", "1200");
    putStored("MainWidth", "9000");
    putStored("MainHeight", "7500");
    for (int run = 0; run < 10; ++run) {
        frmAppMain *frame = start(*m_folder);
        QVERIFY(frame);
        QCOMPARE(frame->pos(), QPoint(-100, 80));
        QCOMPARE(frame->size(), QSize(600, 500));
        QVERIFY(closeFrame());
    }
    QCOMPARE(stored("MainLeft"), QStringLiteral("-1500"));
    QCOMPARE(stored("MainHeight"), QStringLiteral("7500"));
}

void tst_frmAppMain::commandsWithoutModuleDoNothing_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<bool>("noChild");
    QTest::newRow("delete-without-child") << "mnuEditDelete" << true;
    QTest::newRow("property-with-scroll-bar-active") << "mnuEditProperty" << false;
}

void tst_frmAppMain::commandsWithoutModuleDoNothing()
{
    QFETCH(QString, command);
    QFETCH(bool, noChild);
    frmAppMain *frame = start(*m_folder);
    QVERIFY(frame);
    auto *viewer = qobject_cast<frmScriptViewer *>(children().constFirst()->widget());
    if (noChild) {
        frame->mdiArea()->closeAllSubWindows();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    } else {
        frame->activateWindow();
        viewer->scrlVert()->setFocus();
    }
    frame->command(command)->trigger();
    QCOMPARE(children().size(), noChild ? 0 : 1);
    if (!noChild) {
        QCOMPARE(viewer->cmVorelModule().count(), 2);
        QVERIFY(viewer->isEnabled()); // no dialog took the window
    }
    QCOMPARE(m_dialogs, 0);
    QCOMPARE(m_messages->count(), 0);
}

void tst_frmAppMain::frameCloseStopsAtRefusingWindow()
{
    frmAppMain *frame = start(*m_folder);
    QVERIFY(frame);
    frmScriptViewer *edited = frame->NewScriptWindow();
    ivr::setSelectedModuleType(3);
    QTest::mouseRelease(edited->picMain(), Qt::LeftButton, {}, QPoint(200, 200));
    ivr::setSelectedModuleType(0);
    QVERIFY(edited->Changed());
    frmScriptViewer *untouched = frame->NewScriptWindow();

    m_messages->answer(QMessageBox::Cancel);
    frame->command("mnuFileExit")->trigger();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(frame->isVisible());
    QCOMPARE(children().size(), 3);
    QVERIFY(untouched->isVisible());
    QCOMPARE(m_messages->count(), 1);
    QVERIFY(m_messages->lastText().startsWith("Do you want to save changes you made to "));
}

QTEST_MAIN(tst_frmAppMain)
#include "tst_frmappmain.moc"
