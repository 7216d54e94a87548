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
    void openMakesWindowEvenWhenOpenFails();
    void numbersNeverReused();
    void frameCloseStopsAtRefusingWindow();
    void toolboxArmsCanvas();

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
    QVERIFY(frame->windowTitle().startsWith(QStringLiteral("Brindlewave IVR Script Designer")));
    QCOMPARE(frame->pos(), QPoint(67, 67));   // 1000 twips
    QCOMPARE(frame->size(), QSize(433, 433)); // 6500 twips
    QVERIFY(frame->XPSideMenu1()->isVisible());
    QVERIFY(frame->XPSideMenu2()->isVisible());
    QVERIFY(frame->sbStatusBar()->isVisible());
    for (const char *mark : {"mnuViewToolbar", "mnuViewToolBox", "mnuViewStatusBar"})
        QVERIFY(frame->command(mark)->isChecked());
    QCOMPARE(children().size(), 1);
    QCOMPARE(children().constFirst()->widget()->windowTitle(), QStringLiteral("IVR Script 1"));
    QVERIFY(children().constFirst()->isMaximized());
    QCOMPARE(m_messages->count(), 0);
}

void tst_frmAppMain::minimizedUnloadKeepsGeometry()
{
    useStoreOf(*m_folder);
    putStored("MainLeft", "3000");
    putStored("MainWidth", "9000");
    frmAppMain *frame = start(*m_folder);
    QVERIFY(frame);
    frame->showMinimized();
    frame->command("mnuViewToolbar")->trigger();
    QVERIFY(closeFrame());
    QCOMPARE(stored("MainLeft"), QStringLiteral("3000"));
    QCOMPARE(stored("MainWidth"), QStringLiteral("9000"));
    QCOMPARE(stored("MainTop"), QString());
    QCOMPARE(stored("ShowToolBar"), QStringLiteral("False"));
    QCOMPARE(stored("ShowToolBox"), QStringLiteral("True"));
    // The hidden bar stays hidden at the next start.
    frame = start(*m_folder);
    QVERIFY(frame);
    QVERIFY(!frame->XPSideMenu2()->isVisible());
    QVERIFY(!frame->command("mnuViewToolbar")->isChecked());
    QVERIFY(frame->XPSideMenu1()->isVisible());
}

void tst_frmAppMain::geometrySameAfterTenRuns()
{
    useStoreOf(*m_folder);
    putStored("MainLeft", "1500");
    putStored("MainTop", "1200");
    putStored("MainWidth", "9000");
    putStored("MainHeight", "7500");
    for (int run = 0; run < 10; ++run) {
        frmAppMain *frame = start(*m_folder);
        QVERIFY(frame);
        QCOMPARE(frame->pos(), QPoint(100, 80));
        QCOMPARE(frame->size(), QSize(600, 500));
        QVERIFY(closeFrame());
    }
    QCOMPARE(stored("MainLeft"), QStringLiteral("1500"));
    QCOMPARE(stored("MainHeight"), QStringLiteral("7500"));
}

void tst_frmAppMain::commandsWithoutModuleDoNothing_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<bool>("noChild");
    for (const char *name : {"mnuFileSave", "mnuFileClose", "cmdMain5", "mnuFileProperties"})
        QTest::addRow("%s-without-child", name) << QString(name) << true;
    for (const char *name : {"mnuEditDelete", "mnuEditProperty"}) {
        QTest::addRow("%s-without-child", name) << QString(name) << true;
        QTest::addRow("%s-with-scroll-bar-active", name) << QString(name) << false;
    }
    QTest::newRow("cmdMain4-with-scroll-bar-active") << "cmdMain4" << false;
}

void tst_frmAppMain::commandsWithoutModuleDoNothing()
{
    QFETCH(QString, command);
    QFETCH(bool, noChild);
    frmAppMain *frame = start(*m_folder);
    QVERIFY(frame);
    auto *viewer = qobject_cast<frmScriptViewer *>(children().constFirst()->widget());
    QVERIFY(viewer);
    if (noChild) {
        frame->mdiArea()->closeAllSubWindows();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    } else {
        frame->activateWindow();
        viewer->scrlVert()->setFocus();
        QCOMPARE(viewer->cmVorelModule().count(), 2);
    }
    frame->command(command)->trigger();
    QCOMPARE(children().size(), noChild ? 0 : 1);
    if (!noChild) {
        QCOMPARE(viewer->cmVorelModule().count(), 2);
        QVERIFY(viewer->isEnabled()); // no dialog took the window
        QVERIFY(!viewer->Changed());
    }
    QCOMPARE(m_dialogs, 0);
    QCOMPARE(m_messages->count(), 0);
    QVERIFY(frame->isVisible());
}

void tst_frmAppMain::openMakesWindowEvenWhenOpenFails()
{
    frmAppMain *frame = start(*m_folder);
    QVERIFY(frame);
    const QString notAScript = m_folder->file("notes.ivr");
    QFile file(notAScript);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("these are notes, not a script");
    file.close();
    frame->dlgCommonDialog().FileName = QStringLiteral("left over from before");
    ivr::CommonDialog asked;
    std::optional<QString> answer; // the first open is cancelled
    ivr::CommonDialog::setTestAnswer([&](const ivr::CommonDialog &dialog, ivr::CommonDialog::Mode) {
        asked = dialog;
        return answer;
    });
    frame->command("cmdMain1")->trigger();
    QCOMPARE(asked.DialogTitle, QStringLiteral("Open Brindlewave IVR Script "));
    QCOMPARE(asked.Filter, QStringLiteral("Brindlewave IVR Script (*.ivr) |*.ivr"));
    QCOMPARE(asked.Flags, 0x81014L);
    QCOMPARE(asked.FileName, QString());
    QCOMPARE(asked.CancelError, false);
    QCOMPARE(children().size(), 1);

    answer = notAScript;
    frame->command("mnuFileOpen")->trigger();
    QCOMPARE(children().size(), 2);
    QCOMPARE(children().at(0)->widget()->windowTitle(), QStringLiteral("IVR Script 1"));
    QCOMPARE(frame->ScriptWindowCount(), 2);
    QVERIFY(m_messages->count() >= 1); // the damaged file was named to the user
}

void tst_frmAppMain::numbersNeverReused()
{
    frmAppMain *frame = start(*m_folder);
    QVERIFY(frame);
    frame->NewScriptWindow();
    frame->command("mnuWindowNewWindow")->trigger();
    QCOMPARE(children().size(), 3);
    children().at(2)->close();
    frame->mdiArea()->setActiveSubWindow(children().at(0));
    frame->command("mnuFileClose")->trigger();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(children().size(), 1);
    frame->command("mnuFileNew")->trigger();
    QCOMPARE(children().size(), 2);
    QCOMPARE(children().at(1)->widget()->windowTitle(), QStringLiteral("IVR Script 4"));
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
    QVERIFY(frmAppMain::existing());
    QVERIFY(frame->isVisible());
    QCOMPARE(children().size(), 3);
    QVERIFY(untouched->isVisible());
    QCOMPARE(m_messages->count(), 1);
    QVERIFY(m_messages->lastText().startsWith("Do you want to save changes you made to "));
}

void tst_frmAppMain::toolboxArmsCanvas()
{
    frmAppMain *frame = start(*m_folder);
    QVERIFY(frame);
    QTest::mouseClick(frame->toolbox()->cmdModule(4), Qt::LeftButton);
    QCOMPARE(int(ivr::SelectedModuleType()), 4);
    frame->command("mnuViewToolBox")->trigger();
    QVERIFY(!frame->XPSideMenu1()->isVisible());
    QCOMPARE(int(ivr::SelectedModuleType()), 4);
    // A new run starts on Select.
    QVERIFY(closeFrame());
    frame = start(*m_folder);
    QVERIFY(frame);
    QCOMPARE(int(ivr::SelectedModuleType()), 0);
    QVERIFY(frame->toolbox()->cmdModule(0)->togglePressed());
}

QTEST_MAIN(tst_frmAppMain)
#include "tst_frmappmain.moc"
