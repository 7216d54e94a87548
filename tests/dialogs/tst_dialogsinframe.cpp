#include "helpwindow.h"
#include "scriptleveltesting.h"
#include "selectedmoduletype.h"
#include "shelltesting.h"

#include <QListWidget>
#include <QRegularExpression>

using namespace dialogtesting;
using namespace scriptlevel;

namespace {

// "a", "b" and "c" stand for scripts in /srv/ivr; the list split by ",".
QStringList scripts(QString list)
{
    list.replace(QRegularExpression("\\b([abc])\\b"), "/srv/ivr/\\1.ivr");
    return list.isEmpty() ? QStringList() : list.split(',');
}

} // namespace

// The dialogs inside the running program: owned by the main window, usable
// beside it, ended cleanly with their window or with the program; Associate
// Script and the script call module over the script's associated-script list.
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
    void associateEdits_data();
    void associateEdits();
    void associateOpensFromMenu();
    void scriptCallSelects_data();
    void scriptCallSelects();
    void scriptCallCommitsOnlyItsOwn();
    void scriptCallAddNew_data();
    void scriptCallAddNew();
    void helpKeyOpensTopic_data();
    void helpKeyOpensTopic();

private:
    void answerPicker(std::optional<QString> name)
    {
        ivr::CommonDialog::setTestAnswer([this, name](const ivr::CommonDialog &d,
                                                      ivr::CommonDialog::Mode) {
            m_pickerSeen = d.DialogTitle + '|' + d.Filter + '|' + d.FileName + '|'
                           + QString::number(d.Flags, 16) + '|' + QString::number(d.CancelError);
            return name;
        });
    }
    // Works a dialog through "browse:path", "browse:", "type:text",
    // "add", "select:row", "delete", "ok" and "cancel".
    void work(QWidget *dialog, const QStringList &actions);
    ivr::Definition &common() { return activeViewer()->CommonModule()->definition(); }
    void store(const QStringList &names)
    {
        for (const QString &name : names)
            common().AddScript(name);
    }
    qint16 addScriptCall(const QString &scriptName)
    {
        frmScriptViewer *w = activeViewer();
        const qint16 index = w->NextFreeModule();
        w->AddModule(12, 3000, 3000);
        module(*w, index)->moduleData()->definition().setScriptName(scriptName);
        return index;
    }

    QString m_pickerSeen;
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

void tst_DialogsInFrame::work(QWidget *dialog, const QStringList &actions)
{
    auto *list = control<QListWidget>(dialog, "LstScripts");
    for (const QString &action : actions) {
        const QString arg = action.section(':', 1);
        if (action.startsWith("browse:")) { // with no name it cancels
            answerPicker(arg.isEmpty() ? std::nullopt : std::optional(arg));
            click(dialog, "cmdBrowse");
        } else if (action.startsWith("type:")) {
            control<QLineEdit>(dialog, "TxtScriptName")->setText(arg);
        } else if (action == "add") {
            click(dialog, "CmdAddScript");
        } else if (action.startsWith("select:")) {
            list->setCurrentRow(arg.toInt());
        } else if (action == "delete") {
            click(dialog, "cmdDelete");
            // Qt would move the selection to the next row.
            QVERIFY(list->selectedItems().isEmpty());
        } else {
            click(dialog, action == "ok" ? "cmdOk" : "cmdCancel");
        }
    }
}

void tst_DialogsInFrame::associateEdits_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("actions");
    QTest::addColumn<QString>("written");
    QTest::addColumn<bool>("edited");
    QTest::addColumn<bool>("told"); // "Select script" said
    row("typed-before-browse-not-added", "", "type:a,add,ok", "", false, false);
    row("second-add-adds-empty-row", "", "browse:a,add,add,ok", "a,", true, false);
    row("typed-over-browse-added-as-typed", "a", "browse:b,type: c,add,ok", "a, c", true, false);
    row("cancelled-browse-forgets-pick", "", "browse:a,add,browse:,add,ok", "a,a", true, false);
    row("browse-alone-is-no-edit", "a", "browse:b,ok", "a", false, false);
    row("delete-removes-selected-row", "a,b,c", "select:1,delete,ok", "a,c", true, false);
    row("delete-leaves-no-row-selected", "a,b,c", "select:0,delete,delete,ok", "b,c", true, true);
    row("delete-without-rows-says-so", "", "delete,ok", "", false, true);
    row("equal-names-all-rewritten", "a,b,a", "select:1,delete,ok", "a,a", true, false);
    row("equal-names-one-deleted",
        "a,a,a",
        "select:2,delete,browse:b,add,ok",
        "a,a,b",
        true,
        false);
    row("cancel-writes-nothing", "a", "browse:b,add,select:0,delete,cancel", "a", false, false);
}

void tst_DialogsInFrame::associateEdits()
{
    QFETCH(QString, stored);
    QFETCH(QString, actions);
    QFETCH(QString, written);
    QFETCH(bool, edited);
    QFETCH(bool, told);
    store(scripts(stored));
    ivr::PropertyDialog *dialog = openAssociateScript();
    QVERIFY(dialog);
    QSignalSpy completed(dialog, &ivr::PropertyDialog::CompleteEdit);
    work(dialog, scripts(actions));
    QCOMPARE(completed.size(), 1);
    QCOMPARE(completed.at(0).at(1).toBool(), edited);
    QCOMPARE(common().scriptNames(), scripts(written));
    QCOMPARE(common().ScriptCount(), scripts(written).size());
    QVERIFY(!activeViewer()->Changed()); // a clean script stays clean
    QStringList messages;
    for (const ivr::MsgBox::Message &m : m_messages->messages()) {
        QCOMPARE(m.icon, QMessageBox::NoIcon);
        QCOMPARE(m.buttons, QMessageBox::Ok);
        messages << m.text;
    }
    QCOMPARE(messages, told ? QStringList{"Select script"} : QStringList());
}

// The script's changed mark stays as a module placed with the mouse left it.
void tst_DialogsInFrame::associateOpensFromMenu()
{
    frmScriptViewer *w = activeViewer();
    ivr::setSelectedModuleType(3);
    QTest::mouseRelease(w->picMain(), Qt::LeftButton, {}, QPoint(100, 100));
    ivr::setSelectedModuleType(0);
    QVERIFY(w->Changed());
    store({"/srv/ivr/b.ivr", "/srv/ivr/a.ivr"});
    ivr::PropertyDialog *dialog = openAssociateScript();
    QVERIFY(dialog);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Associate Script"));
    QCOMPARE(dialog->parentWidget(), frmAppMain::existing());
    QVERIFY(!w->isEnabled());
    QVERIFY(!control(dialog, "cmdWaveFiles")->isVisible());
    auto *list = control<QListWidget>(dialog, "LstScripts");
    QCOMPARE(list->count(), 2);
    QCOMPARE(list->item(0)->text(), QStringLiteral("/srv/ivr/b.ivr")); // in stored order
    QVERIFY(list->selectedItems().isEmpty());

    // Its own picker: the main window's shared one is left alone.
    ivr::CommonDialog &shared = w->commonDialog();
    shared.DialogTitle = QStringLiteral("Save");
    work(dialog, {"browse:/srv/ivr/c.ivr", "browse:"});
    QCOMPARE(m_pickerSeen,
             QStringLiteral("Open Brindlewave IVR Script |Brindlewave IVR Script (*.ivr) |*.ivr"
                            "|/srv/ivr/c.ivr|81000|0"));
    QCOMPARE(shared.DialogTitle, QStringLiteral("Save"));
    work(dialog, {"add", "ok"});
    QVERIFY(w->isEnabled());
    QVERIFY(w->Changed());
    QCOMPARE(common().ScriptName(3), QStringLiteral("/srv/ivr/c.ivr"));
}

void tst_DialogsInFrame::scriptCallSelects_data()
{
    QTest::addColumn<QString>("names");
    QTest::addColumn<QString>("own");
    QTest::addColumn<int>("selected");
    row("exact-match-selected", "a,b", "/srv/ivr/b.ivr", 1);
    row("last-of-equal-rows-wins", "a,b,a", "/srv/ivr/a.ivr", 2);
    row("case-differs-no-selection", "a", "/SRV/IVR/A.IVR", -1);
    row("blank-differs-no-selection", "a", "/srv/ivr/a.ivr ", -1);
    row("script-gone-no-selection", "b", "/srv/ivr/a.ivr", -1);
    row("no-scripts-empty-list", "", "/srv/ivr/a.ivr", -1);
}

// OK right after the opening writes what the list shows: the name box has
// already marked the dialog as edited.
void tst_DialogsInFrame::scriptCallSelects()
{
    QFETCH(QString, names);
    QFETCH(QString, own);
    QFETCH(int, selected);
    const QStringList list = scripts(names);
    store(list);
    frmScriptViewer *w = activeViewer();
    const qint16 index = addScriptCall(own);
    ivr::PropertyDialog *dialog = open(*w, index);
    QVERIFY(dialog);
    QCOMPARE(dialog->windowTitle(), QString::number(index));
    auto *combo = control<QComboBox>(dialog, "cboScripts");
    QCOMPARE(items(combo), list);
    QCOMPARE(combo->currentIndex(), selected);
    QVERIFY(dialog->Edited());
    click(dialog, "cmdOk");
    QCOMPARE(module(*w, index)->moduleData()->definition().ScriptName(),
             selected >= 0 ? list.at(selected) : QString());
}

void tst_DialogsInFrame::scriptCallCommitsOnlyItsOwn()
{
    store(scripts("a,b"));
    frmScriptViewer *w = activeViewer();
    const qint16 call = addScriptCall(QString());
    const qint16 play = w->NextFreeModule();
    w->AddModule(3, 6000, 3000);
    const QString target = QStringLiteral("[%1]").arg(call);
    module(*w, play)->moduleData()->definition().setNextModule(target);
    w->setFileName(m_folder->file("calls.ivr"));
    QVERIFY(w->SaveScript(false));
    ivr::PropertyDialog *dialog = open(*w, call);
    QVERIFY(!w->isEnabled());
    control<QLineEdit>(dialog, "txtModuleName")->setText(QStringLiteral("  "));
    click(dialog, "cmdOk");
    QCOMPARE(m_messages->lastText(), QStringLiteral("Invalid Name"));
    QVERIFY(dialog->isVisible());
    control<QLineEdit>(dialog, "txtModuleName")->setText(QStringLiteral("Billing"));
    enter(dialog, "cboScripts", "/srv/ivr/b.ivr");
    click(dialog, "cmdOk");
    const ivr::ModuleDataPtr data = module(*w, call)->moduleData();
    QCOMPARE(data->Name(), QStringLiteral("Billing"));
    QCOMPARE(data->definition().ScriptName(), QStringLiteral("/srv/ivr/b.ivr"));
    // The window is only enabled: the caption, the exits naming the module
    // and the unsaved-changes flag stay as they were.
    QVERIFY(w->isEnabled());
    QCOMPARE(module(*w, call)->Caption(), QString::number(call));
    QCOMPARE(definitionOf(*w, play).value("NextModule").toString(), target);
    QVERIFY(!w->Changed());
    QCOMPARE(common().scriptNames(), QStringList({"/srv/ivr/a.ivr", "/srv/ivr/b.ivr"}));
}

void tst_DialogsInFrame::scriptCallAddNew_data()
{
    QTest::addColumn<QString>("actions");
    QTest::addColumn<int>("selected");
    QTest::addColumn<int>("rows");
    row("change-refills-without-selection", "browse:c,add,ok", -1, 3);
    row("cancel-keeps-selection", "select:0,delete,cancel", 1, 2);
    row("ok-unchanged-keeps-selection", "ok", 1, 2);
}

void tst_DialogsInFrame::scriptCallAddNew()
{
    QFETCH(QString, actions);
    QFETCH(int, selected);
    QFETCH(int, rows);
    store(scripts("a,b"));
    frmScriptViewer *w = activeViewer();
    const qint16 call = addScriptCall("/srv/ivr/b.ivr");
    ivr::PropertyDialog *callDialog = open(*w, call);
    click(callDialog, "CmdAddNew");
    ivr::PropertyDialog *associate = shown("FrmCommon");
    QVERIFY(associate);
    QCOMPARE(associate->parentWidget(), frmAppMain::existing());
    QVERIFY(!callDialog->isEnabled());
    QVERIFY(!w->isEnabled());
    // Not the window's own Associate Script: the window hears nothing of it.
    QVERIFY(!w->openDialog("FrmCommon"));
    work(associate, scripts(actions));
    QVERIFY(callDialog->isEnabled());
    QVERIFY(!w->isEnabled());
    auto *combo = control<QComboBox>(callDialog, "cboScripts");
    QCOMPARE(combo->count(), rows);
    QCOMPARE(combo->currentIndex(), selected);
    click(callDialog, "cmdOk");
    QVERIFY(w->isEnabled());
    QCOMPARE(module(*w, call)->moduleData()->definition().ScriptName(),
             selected >= 0 ? QStringLiteral("/srv/ivr/b.ivr") : QString());
}

void tst_DialogsInFrame::helpKeyOpensTopic_data()
{
    QTest::addColumn<QString>("dialogClass");
    QTest::addColumn<QString>("topic");
    row("associate-script-topic", "FrmCommon", "bdw_d_scripts.htm");
    row("script-call-topic", "FrmScripts", "bdw_d_scripts.htm");
    row("wave-table-topic", "frmWaveFile", "bdw_d_wavefiles.htm");
}

void tst_DialogsInFrame::helpKeyOpensTopic()
{
    QFETCH(QString, dialogClass);
    QFETCH(QString, topic);
    const auto pressF1 = [](QWidget *dialog) {
        dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog));
        QTest::keyClick(dialog, Qt::Key_F1);
    };
    if (dialogClass == "frmWaveFile") {
        QVERIFY(withWaveFiles(pressF1));
    } else {
        ivr::PropertyDialog *dialog = dialogClass == "FrmCommon"
                                              ? openAssociateScript()
                                              : open(*activeViewer(), addScriptCall(QString()));
        pressF1(dialog);
        click(dialog, "cmdCancel");
    }
    ivr::HelpWindow *help = ivr::HelpWindow::existing();
    QVERIFY(help);
    QCOMPARE(help->currentUrl().fileName(), topic);
    delete help;
}

QTEST_MAIN(tst_DialogsInFrame)
#include "tst_dialogsinframe.moc"
