#include "dialogtesting.h"
#include "messagerecorder.h"
#include "selectedmoduletype.h"
#include "shelltesting.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSignalSpy>

using namespace dialogtesting;
using namespace shelltesting;

// A dialog inside the running program: owned by the main window, usable
// beside it, and ended cleanly with its window or with the program.
class tst_DialogsInFrame : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void ownedByFrameAndFrameUsable();
    void openedFromMenuAndToolbar_data();
    void openedFromMenuAndToolbar();
    void exitAsksAndCancelKeepsDialog();
    void exitWithDialogOpenEndsCleanly();
    void closingWindowEndsItsDialog();

private:
    frmScriptViewer *activeViewer()
    {
        return qobject_cast<frmScriptViewer *>(
                frmAppMain::existing()->mdiArea()->activeSubWindow()->widget());
    }

    std::unique_ptr<ProgramFolder> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};

void tst_DialogsInFrame::init()
{
    m_folder = std::make_unique<ProgramFolder>();
    QVERIFY(m_folder->isValid());
    m_messages = std::make_unique<MessageRecorder>();
    QVERIFY(start(*m_folder));
}

void tst_DialogsInFrame::cleanup()
{
    discardFrame();
    m_messages.reset();
    m_folder.reset();
}

void tst_DialogsInFrame::ownedByFrameAndFrameUsable()
{
    frmAppMain *frame = frmAppMain::existing();
    frmScriptViewer *w = activeViewer();
    w->AddModule(3, 3000, 3000);
    ivr::PropertyDialog *dialog = open(*w, 2);
    QVERIFY(dialog);
    QCOMPARE(dialog->parentWidget(), frame);
    QVERIFY(!w->isEnabled());
    QVERIFY(dialog->isEnabled());
    QVERIFY(control(dialog, "txtModuleName")->isEnabled());
    QCOMPARE(dialog->windowIcon().cacheKey(), frame->windowIcon().cacheKey());
    // The main window goes on: a new script window comes and takes input.
    frmScriptViewer *second = frame->NewScriptWindow();
    QVERIFY(second->isEnabled());
    ivr::setSelectedModuleType(3);
    QTest::mouseRelease(second->picMain(), Qt::LeftButton, {}, QPoint(100, 100));
    ivr::setSelectedModuleType(0);
    QCOMPARE(second->cmVorelModule().count(), 3);
    click(dialog, "cmdCancel");
    QVERIFY(w->isEnabled());
}

void tst_DialogsInFrame::openedFromMenuAndToolbar_data()
{
    QTest::addColumn<bool>("toolbar");
    QTest::newRow("edit-property-menu") << false;
    QTest::newRow("show-property-button") << true;
}

void tst_DialogsInFrame::openedFromMenuAndToolbar()
{
    QFETCH(bool, toolbar);
    frmAppMain *frame = frmAppMain::existing();
    frmScriptViewer *w = activeViewer();
    w->AddModule(3, 3000, 3000);
    QTest::mouseClick(module(*w, 2), Qt::LeftButton); // the module takes the focus
    (toolbar ? frame->cmdMain(4) : frame->mnuEditProperty())->trigger();
    ivr::PropertyDialog *dialog = nullptr;
    for (QWidget *top : QApplication::topLevelWidgets()) {
        if (auto *d = qobject_cast<ivr::PropertyDialog *>(top); d && d->isVisible())
            dialog = d;
    }
    QVERIFY(dialog);
    QCOMPARE(dialog->Index(), qint16(2));
    QCOMPARE(dialog->metaObject()->className(), "ivr::frmPropPlay");
    click(dialog, "cmdCancel");
}

void tst_DialogsInFrame::exitAsksAndCancelKeepsDialog()
{
    frmAppMain *frame = frmAppMain::existing();
    frmScriptViewer *w = activeViewer();
    ivr::setSelectedModuleType(3);
    QTest::mouseRelease(w->picMain(), Qt::LeftButton, {}, QPoint(100, 100));
    ivr::setSelectedModuleType(0);
    ivr::PropertyDialog *dialog = open(*w, 2);
    m_messages->answer(QMessageBox::Cancel);
    QVERIFY(!frame->close());
    QCOMPARE(m_messages->count(), 1);
    QVERIFY(m_messages->lastText().startsWith("Do you want to save changes you made to "));
    QVERIFY(dialog->isVisible());
    QVERIFY(w->Changed()); // the untouched dialog did not clear it
    click(dialog, "cmdCancel");
}

void tst_DialogsInFrame::exitWithDialogOpenEndsCleanly()
{
    frmScriptViewer *w = activeViewer();
    w->AddModule(3, 3000, 3000);
    ivr::PropertyDialog *dialog = open(*w, 2);
    QPointer<ivr::PropertyDialog> alive(dialog);
    QSignalSpy completed(dialog, &ivr::PropertyDialog::CompleteEdit);
    m_messages->answer(QMessageBox::No);
    QVERIFY(closeFrame());
    QCOMPARE(completed.size(), 1);
    QVERIFY(alive.isNull());
    const QWidgetList tops = QApplication::topLevelWidgets();
    QVERIFY(std::none_of(tops.begin(), tops.end(), [](QWidget *top) { return top->isVisible(); }));
}

void tst_DialogsInFrame::closingWindowEndsItsDialog()
{
    frmScriptViewer *w = activeViewer();
    ivr::setSelectedModuleType(3);
    QTest::mouseRelease(w->picMain(), Qt::LeftButton, {}, QPoint(100, 100));
    ivr::setSelectedModuleType(0);
    ivr::PropertyDialog *dialog = open(*w, 2);
    QPointer<ivr::PropertyDialog> alive(dialog);
    QSignalSpy completed(dialog, &ivr::PropertyDialog::CompleteEdit);
    // A refused close leaves the dialog up.
    m_messages->answer(QMessageBox::Cancel);
    frmAppMain::existing()->mdiArea()->activeSubWindow()->close();
    QVERIFY(dialog->isVisible());
    QCOMPARE(completed.size(), 0);
    m_messages->answer(QMessageBox::No);
    frmAppMain::existing()->mdiArea()->activeSubWindow()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(completed.size(), 1);
    QVERIFY(alive.isNull());
    QVERIFY(frmAppMain::existing()->mdiArea()->subWindowList().isEmpty());
}

QTEST_MAIN(tst_DialogsInFrame)
#include "tst_dialogsinframe.moc"
