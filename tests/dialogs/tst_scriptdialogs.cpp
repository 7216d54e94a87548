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

// Associate Script and the script call module: the associated-script list
// of CommonModule, edited, chosen from, saved and reopened.
class tst_ScriptDialogs : public QObject, private Fixture
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(setUp() && shelltesting::start(*m_folder)); }
    void cleanup()
    {
        shelltesting::discardFrame();
        tearDown();
    }
    void associateEdits_data();
    void associateEdits();
    void associateOpensFromMenu_data();
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

void tst_ScriptDialogs::work(QWidget *dialog, const QStringList &actions)
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

void tst_ScriptDialogs::associateEdits_data()
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

void tst_ScriptDialogs::associateEdits()
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
    QStringList messages;
    for (const ivr::MsgBox::Message &m : m_messages->messages()) {
        QCOMPARE(m.icon, QMessageBox::NoIcon);
        QCOMPARE(m.buttons, QMessageBox::Ok);
        messages << m.text;
    }
    QCOMPARE(messages, told ? QStringList{"Select script"} : QStringList());
}

void tst_ScriptDialogs::associateOpensFromMenu_data()
{
    QTest::addColumn<bool>("changedBefore");
    QTest::newRow("clean-script-stays-clean") << false;
    QTest::newRow("changed-script-stays-changed") << true;
}

void tst_ScriptDialogs::associateOpensFromMenu()
{
    QFETCH(bool, changedBefore);
    frmScriptViewer *w = activeViewer();
    if (changedBefore) { // a module placed with the mouse
        ivr::setSelectedModuleType(3);
        QTest::mouseRelease(w->picMain(), Qt::LeftButton, {}, QPoint(100, 100));
        ivr::setSelectedModuleType(0);
    }
    QCOMPARE(w->Changed(), changedBefore);
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
    QCOMPARE(w->Changed(), changedBefore);
    QCOMPARE(common().ScriptName(3), QStringLiteral("/srv/ivr/c.ivr"));
}

void tst_ScriptDialogs::scriptCallSelects_data()
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
void tst_ScriptDialogs::scriptCallSelects()
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

void tst_ScriptDialogs::scriptCallCommitsOnlyItsOwn()
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
    QCOMPARE(exitOf(*w, play, "NextModule"), target);
    QVERIFY(!w->Changed());
    QCOMPARE(common().scriptNames(), QStringList({"/srv/ivr/a.ivr", "/srv/ivr/b.ivr"}));
}

void tst_ScriptDialogs::scriptCallAddNew_data()
{
    QTest::addColumn<QString>("actions");
    QTest::addColumn<int>("selected");
    QTest::addColumn<int>("rows");
    row("change-refills-without-selection", "browse:c,add,ok", -1, 3);
    row("cancel-keeps-selection", "select:0,delete,cancel", 1, 2);
    row("ok-unchanged-keeps-selection", "ok", 1, 2);
}

void tst_ScriptDialogs::scriptCallAddNew()
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

void tst_ScriptDialogs::helpKeyOpensTopic_data()
{
    QTest::addColumn<QString>("dialogClass");
    QTest::addColumn<QString>("topic");
    row("associate-script-topic", "FrmCommon", "bdw_d_scripts.htm");
    row("script-call-topic", "FrmScripts", "bdw_d_scripts.htm");
    row("wave-table-topic", "frmWaveFile", "bdw_d_wavefiles.htm");
}

void tst_ScriptDialogs::helpKeyOpensTopic()
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

QTEST_MAIN(tst_ScriptDialogs)
#include "tst_scriptdialogs.moc"
