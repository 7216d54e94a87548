#include "scriptleveltesting.h"
#include "selectedmoduletype.h"
#include "shelltesting.h"

using namespace dialogtesting;
using namespace scriptlevel;

// A dialog inside the running program: owned by the main window, usable
// beside it, and ended cleanly with its window or with the program.
class tst_DialogsInFrame : public QObject, private Fixture
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(setUp() && shelltesting::start(*m_folder)); }
    void cleanup()
    {
        shelltesting::discardFrame();
        tearDown();
    }
    void ownedByFrameAndFrameUsable();
    void openedFromMenuAndToolbar_data();
    void openedFromMenuAndToolbar();
    void closeWithDialogOpen_data();
    void closeWithDialogOpen();
};

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
    frmScriptViewer *w = activeViewer();
    w->AddModule(3, 3000, 3000);
    QTest::mouseClick(module(*w, 2), Qt::LeftButton); // the module takes the focus
    frmAppMain *frame = frmAppMain::existing();
    (toolbar ? frame->cmdMain(4) : frame->mnuEditProperty())->trigger();
    ivr::PropertyDialog *dialog = shown("frmPropPlay");
    QVERIFY(dialog);
    QCOMPARE(dialog->Index(), qint16(2));
    QCOMPARE(dialog->metaObject()->className(), "ivr::frmPropPlay");
    click(dialog, "cmdCancel");
}

void tst_DialogsInFrame::closeWithDialogOpen_data()
{
    QTest::addColumn<bool>("program"); // the whole program, or the script's window
    QTest::addColumn<bool>("refused"); // Cancel at the save question
    QTest::newRow("refused-exit-closes-dialog") << true << true;
    QTest::newRow("exit-leaves-dialog-open") << true << false;
    QTest::newRow("refused-window-close-closes-dialog") << false << true;
    QTest::newRow("window-close-leaves-dialog-open") << false << false;
}

// A module placed with the mouse leaves the script changed, so the close asks
// first; the untouched dialog neither clears nor answers for it.
void tst_DialogsInFrame::closeWithDialogOpen()
{
    QFETCH(bool, program);
    QFETCH(bool, refused);
    frmScriptViewer *w = activeViewer();
    ivr::setSelectedModuleType(3);
    QTest::mouseRelease(w->picMain(), Qt::LeftButton, {}, QPoint(100, 100));
    ivr::setSelectedModuleType(0);
    ivr::PropertyDialog *dialog = open(*w, 2);
    QPointer<ivr::PropertyDialog> alive(dialog);
    QSignalSpy completed(dialog, &ivr::PropertyDialog::CompleteEdit);
    m_messages->answer(refused ? QMessageBox::Cancel : QMessageBox::No);
    if (program)
        QCOMPARE(shelltesting::closeFrame(), !refused);
    else
        frmAppMain::existing()->mdiArea()->activeSubWindow()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(m_messages->count(), 1);
    QVERIFY(m_messages->lastText().startsWith("Do you want to save changes you made to "));
    QCOMPARE(completed.size(), refused ? 0 : 1);
    QCOMPARE(alive.isNull(), !refused);
    if (refused) {
        QVERIFY(w->Changed());
        click(dialog, "cmdCancel");
        return;
    }
    const QWidgetList tops = QApplication::topLevelWidgets();
    if (program)
        QVERIFY(std::none_of(tops.begin(), tops.end(), [](QWidget *t) { return t->isVisible(); }));
    else
        QVERIFY(frmAppMain::existing()->mdiArea()->subWindowList().isEmpty());
}

QTEST_MAIN(tst_DialogsInFrame)
#include "tst_dialogsinframe.moc"
