#include "commondialog.h"
#include "messagerecorder.h"
#include "selectedmoduletype.h"
#include "shelltesting.h"
#include "statuspanels.h"
#include "vorelmodule.h"

#include <QScrollBar>
#include <QToolBar>
#include <QToolButton>

using namespace shelltesting;
using Mode = ivr::CommonDialog::Mode;

class tst_frmAppMain : public QObject
{
    Q_OBJECT

public:
    enum class Effect {
        Nothing,
        NewWindow,
        OpenAsked,
        SavedWithoutAsking,
        SaveAsked,
        WindowClosed,
        DeleteAsked,
        PropertyDialog,
        RunStarted,
        FrameClosed
    };

private slots:
    void init();
    void cleanup();

    void emptyStoreGivesDefaults();
    void minimizedUnloadKeepsGeometry();
    void geometrySameAfterTenRuns();
    void viewSettingSavedAlone_data();
    void viewSettingSavedAlone();
    void menuTree_data();
    void menuTree();
    void commandReachesItsTarget_data();
    void commandReachesItsTarget();
    void commandsWithoutModuleDoNothing_data();
    void commandsWithoutModuleDoNothing();
    void windowNumberNeverGoesDown();
    void openMakesItsOwnWindow_data();
    void openMakesItsOwnWindow();
    void frameCloseStopsAtRefusingWindow();

private:
    std::unique_ptr<ProgramFolder> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
    std::optional<QString> m_answer;
    QList<Mode> m_dialogs;
    QString m_dialogTitle;
};

void tst_frmAppMain::init()
{
    m_folder = std::make_unique<ProgramFolder>();
    QVERIFY(m_folder->isValid());
    m_messages = std::make_unique<MessageRecorder>();
    m_dialogs.clear();
    m_answer.reset();
    ivr::CommonDialog::setTestAnswer([this](const ivr::CommonDialog &dialog, Mode mode) {
        m_dialogs << mode;
        m_dialogTitle = dialog.DialogTitle;
        return m_answer;
    });
}

void tst_frmAppMain::cleanup()
{
    discardFrame();
    ivr::setSelectedModuleType(0);
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
    QVERIFY(scriptWindows().constFirst()->isMaximized());
}

void tst_frmAppMain::minimizedUnloadKeepsGeometry()
{
    useStoreOf(*m_folder);
    putStored("MainLeft", "3000");
    frmAppMain *frame = start(*m_folder);
    QVERIFY(frame);
    frame->showMinimized();
    choose("&View", "&Toolbar");
    QVERIFY(closeFrame());
    QCOMPARE(stored("MainLeft"), QStringLiteral("3000"));
    QCOMPARE(stored("MainTop"), QString());
    QCOMPARE(stored("ShowToolBar"), QStringLiteral("False"));
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

void tst_frmAppMain::viewSettingSavedAlone_data()
{
    QTest::addColumn<int>("bar");
    QTest::newRow("toolbar-entry-hides-another-bar-or-saves-another-key") << 0;
    QTest::newRow("toolbox-entry-hides-another-bar-or-saves-another-key") << 1;
    QTest::newRow("status-bar-entry-hides-another-bar-or-saves-another-key") << 2;
}

void tst_frmAppMain::viewSettingSavedAlone()
{
    QFETCH(int, bar);
    const QString entries[] = {"&Toolbar", "Tool&box", "&Status Bar"};
    const QString keys[] = {"ShowToolBar", "ShowToolBox", "ShowStatusBar"};
    const auto bars = [](frmAppMain *frame) {
        return QList<QWidget *>{frame->XPSideMenu2(), frame->XPSideMenu1(), frame->sbStatusBar()};
    };
    frmAppMain *frame = start(*m_folder);
    QVERIFY(frame);
    choose("&View", entries[bar]);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(bars(frame).at(i)->isVisible(), i != bar);
    QVERIFY(closeFrame());
    for (int i = 0; i < 3; ++i)
        QCOMPARE(stored(keys[i]), i == bar ? QStringLiteral("False") : QStringLiteral("True"));

    frame = start(*m_folder);
    QVERIFY(frame);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(bars(frame).at(i)->isVisible(), i != bar);
        QCOMPARE(menuEntry("&View", entries[i])->isChecked(), i != bar);
    }
}

void tst_frmAppMain::menuTree_data()
{
    QTest::addColumn<QString>("menu");
    QTest::addColumn<int>("place"); // in the bar; -1: a popup, never in the bar
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("caption"); // "-": a separator; "": the menu ends here
    QTest::addColumn<QString>("shortcut");
    const auto row = [](const char *fault,
                        const char *menu,
                        int place,
                        int position,
                        const char *name,
                        const char *caption,
                        const char *shortcut = "") {
        QTest::newRow(fault) << menu << place << position << name << caption << shortcut;
    };
    row("file-new-moved-or-ctrl-n-lost", "&File", 0, 0, "mnuFileNew", "&New", "Ctrl+N");
    row("file-open-moved-or-ctrl-o-lost", "&File", 0, 1, "mnuFileOpen", "&Open...", "Ctrl+O");
    row("file-close-moved", "&File", 0, 2, "mnuFileClose", "&Close");
    row("file-bar0-lost", "&File", 0, 3, "mnuFileBar0", "-");
    row("file-save-moved-or-ctrl-s-lost", "&File", 0, 4, "mnuFileSave", "&Save", "Ctrl+S");
    row("file-save-as-moved", "&File", 0, 5, "mnuFileSaveAs", "Save &As...");
    row("file-bar1-lost", "&File", 0, 6, "mnuFileBar1", "-");
    row("file-properties-moved", "&File", 0, 7, "mnuFileProperties", "Propert&ies");
    row("file-bar2-lost", "&File", 0, 8, "mnuFileBar2", "-");
    row("file-exit-moved", "&File", 0, 9, "mnuFileExit", "E&xit");
    row("file-menu-longer", "&File", 0, 10, "", "");
    row("edit-property-moved", "&Edit", 1, 0, "mnuEditProperty", "&Property");
    row("edit-bar-lost", "&Edit", 1, 1, "mnusap", "-");
    row("edit-delete-moved", "&Edit", 1, 2, "mnuEditDelete", "&Delete");
    row("edit-menu-longer", "&Edit", 1, 3, "", "");
    row("view-toolbar-moved", "&View", 2, 0, "mnuViewToolbar", "&Toolbar");
    row("view-toolbox-moved", "&View", 2, 1, "mnuViewToolBox", "Tool&box");
    row("view-status-bar-moved", "&View", 2, 2, "mnuViewStatusBar", "&Status Bar");
    row("view-menu-longer", "&View", 2, 3, "", "");
    row("window-new-moved", "&Window", 3, 0, "mnuWindowNewWindow", "&New Window");
    row("window-bar-lost", "&Window", 3, 1, "mnuWindowBar0", "-");
    row("window-cascade-moved", "&Window", 3, 2, "mnuWindowCascade", "&Cascade");
    row("window-tile-h-moved", "&Window", 3, 3, "mnuWindowTileHorizontal", "Tile &Horizontal");
    row("window-tile-v-moved", "&Window", 3, 4, "mnuWindowTileVertical", "Tile &Vertical");
    row("window-icons-moved", "&Window", 3, 5, "mnuWindowArrangeIcons", "&Arrange Icons");
    row("window-menu-longer", "&Window", 3, 6, "", "");
    row("help-contents-moved", "&Help", 4, 0, "mnuHelpContents", "&Contents");
    row("help-search-moved", "&Help", 4, 1, "mnuHelpSearchForHelpOn", "&Search For Help On...");
    row("help-bar-lost", "&Help", 4, 2, "mnuHelpBar0", "-");
    row("help-about-moved-or-blank-lost", "&Help", 4, 3, "mnuHelpAbout", "&About ");
    row("help-menu-longer", "&Help", 4, 4, "", "");
    row("menu-bar-longer", "", 5, 0, "", "");
    row("script-popup-wave-files-moved", "ScriptView", -1, 0, "mnuWaveFiles", "&Wave Files");
    row("script-popup-property-moved", "ScriptView", -1, 1, "mnuProperty", "&Property");
    row("script-popup-longer-or-in-bar", "ScriptView", -1, 2, "", "");
}

void tst_frmAppMain::menuTree()
{
    QFETCH(QString, menu);
    QFETCH(int, place);
    QFETCH(int, position);
    QFETCH(QString, name);
    QFETCH(QString, caption);
    QFETCH(QString, shortcut);
    frmAppMain *frame = start(*m_folder);
    QVERIFY(frame);
    const QList<QAction *> bar = frame->menuBar()->actions();
    if (menu.isEmpty()) {
        QCOMPARE(bar.size(), place);
        return;
    }
    QMenu *found = place < 0 ? frame->mnuScript() : bar.value(place)->menu();
    QVERIFY(found);
    QCOMPARE(found->title(), menu);
    if (place < 0)
        QVERIFY(!frame->menuBar()->actions().contains(found->menuAction()));
    const QList<QAction *> entries = found->actions();
    if (caption.isEmpty()) {
        QCOMPARE(entries.size(), position);
        return;
    }
    QAction *entry = entries.value(position);
    QVERIFY(entry);
    QCOMPARE(entry->isSeparator(), caption == "-");
    if (!entry->isSeparator())
        QCOMPARE(entry->text(), caption);
    QCOMPARE(entry->objectName(), name);
    QCOMPARE(entry->shortcut().toString(QKeySequence::PortableText), shortcut);
}

void tst_frmAppMain::commandReachesItsTarget_data()
{
    QTest::addColumn<QString>("command"); // "cmdMain<n>" or "menu|entry"
    QTest::addColumn<QString>("tip");
    QTest::addColumn<Effect>("effect");
    const auto row = [](const char *fault, const char *command, const char *tip, Effect effect) {
        QTest::newRow(fault) << command << tip << effect;
    };
    row("new-button-wrong", "cmdMain0", "Add New Script", Effect::NewWindow);
    row("open-button-wrong", "cmdMain1", "Open Existing Script", Effect::OpenAsked);
    row("save-button-wrong", "cmdMain2", "Save Changes", Effect::SavedWithoutAsking);
    row("delete-button-wrong", "cmdMain3", "Delete", Effect::DeleteAsked);
    row("property-button-wrong", "cmdMain4", "Show Property", Effect::PropertyDialog);
    row("run-button-wrong", "cmdMain5", "Run Script", Effect::RunStarted);
    row("exit-button-wrong", "cmdMain6", "Exit", Effect::FrameClosed);
    row("file-new-wrong", "&File|&New", "", Effect::NewWindow);
    row("file-open-wrong", "&File|&Open...", "", Effect::OpenAsked);
    row("file-close-wrong", "&File|&Close", "", Effect::WindowClosed);
    row("file-save-wrong", "&File|&Save", "", Effect::SavedWithoutAsking);
    row("file-save-as-wrong", "&File|Save &As...", "", Effect::SaveAsked);
    row("file-properties-acts", "&File|Propert&ies", "", Effect::Nothing);
    row("file-exit-wrong", "&File|E&xit", "", Effect::FrameClosed);
    row("edit-property-wrong", "&Edit|&Property", "", Effect::PropertyDialog);
    row("edit-delete-wrong", "&Edit|&Delete", "", Effect::DeleteAsked);
    row("window-new-wrong", "&Window|&New Window", "", Effect::NewWindow);
}

void tst_frmAppMain::commandReachesItsTarget()
{
    QFETCH(QString, command);
    QFETCH(QString, tip);
    QFETCH(Effect, effect);
    // A named, unchanged script with the focus on one of its modules.
    const QString script = m_folder->file("routing.ivr");
    QVERIFY(QFile::copy(QStringLiteral(IVR_TEST_DATA "/every_type.ivr"), script));
    frmAppMain *frame = start(*m_folder, {script});
    QVERIFY(frame);
    frame->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(frame));
    frmScriptViewer *viewer = viewerOf(scriptWindows().constFirst());
    VorelModule *welcome = nullptr;
    for (VorelModule *module : viewer->cmVorelModule())
        welcome = module->Caption() == "Welcome" ? module : welcome;
    QVERIFY(welcome);
    welcome->setFocus();
    const int modules = viewer->cmVorelModule().count();
    QFile file(script);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate)); // Save must write it again
    file.close();

    if (command.startsWith("cmdMain")) {
        QList<QAction *> buttons = frame->XPSideMenu2()->actions();
        buttons.removeIf([](QAction *action) { return action->isSeparator(); });
        QCOMPARE(buttons.size(), 7);
        QWidget *button = frame->XPSideMenu2()->widgetForAction(buttons.at(command.mid(7).toInt()));
        QCOMPARE(button->toolTip(), tip);
        QTest::mouseClick(button, Qt::LeftButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    } else {
        choose(command.section('|', 0, 0), command.section('|', 1));
    }

    const QList<Mode> open{Mode::Open};
    const QList<Mode> save{Mode::Save};
    switch (effect) {
    case Effect::Nothing:
        QVERIFY(m_dialogs.isEmpty() && m_messages->count() == 0 && viewer->isEnabled());
        QCOMPARE(scriptWindows().size(), 1);
        QCOMPARE(file.size(), 0);
        break;
    case Effect::NewWindow:
        QCOMPARE(scriptWindows().size(), 2);
        QCOMPARE(scriptWindows().last()->widget()->windowTitle(), "IVR Script 2");
        break;
    case Effect::OpenAsked:
        QCOMPARE(m_dialogs, open);
        QCOMPARE(m_dialogTitle, "Open Brindlewave IVR Script ");
        QCOMPARE(scriptWindows().size(), 1); // cancelled
        break;
    case Effect::SavedWithoutAsking:
        QVERIFY(m_dialogs.isEmpty());
        QVERIFY(file.size() > 0);
        break;
    case Effect::SaveAsked:
        QCOMPARE(m_dialogs, save);
        QCOMPARE(file.size(), 0); // cancelled
        break;
    case Effect::WindowClosed:
        QCOMPARE(scriptWindows().size(), 0);
        break;
    case Effect::DeleteAsked:
        QVERIFY2(m_messages->lastText().startsWith("Do you want to delete module [ Welcome"),
                 qPrintable(m_messages->lastText()));
        QCOMPARE(viewer->cmVorelModule().count(), modules - 1);
        break;
    case Effect::PropertyDialog:
        // A dialog takes the window once the build has them; until then
        // nothing that another command does may happen.
        QVERIFY(m_dialogs.isEmpty() && m_messages->count() == 0);
        QCOMPARE(scriptWindows().size(), 1);
        QCOMPARE(viewer->cmVorelModule().count(), modules);
        QCOMPARE(file.size(), 0);
        break;
    case Effect::RunStarted:
        QCOMPARE(m_messages->count(), 0);
        QTRY_COMPARE(m_folder->runnerLog().size(), 2);
        break;
    case Effect::FrameClosed:
        QVERIFY(!frmAppMain::existing());
        break;
    }
}

void tst_frmAppMain::commandsWithoutModuleDoNothing_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<bool>("noChild");
    QTest::newRow("delete-without-child") << "&Delete" << true;
    QTest::newRow("property-with-scroll-bar-active") << "&Property" << false;
}

void tst_frmAppMain::commandsWithoutModuleDoNothing()
{
    QFETCH(QString, entry);
    QFETCH(bool, noChild);
    frmAppMain *frame = start(*m_folder);
    QVERIFY(frame);
    frmScriptViewer *viewer = viewerOf(scriptWindows().constFirst());
    if (noChild) {
        frame->mdiArea()->closeAllSubWindows();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    } else {
        frame->activateWindow();
        viewer->scrlVert()->setFocus();
    }
    choose("&Edit", entry);
    QCOMPARE(scriptWindows().size(), noChild ? 0 : 1);
    if (!noChild) {
        QCOMPARE(viewer->cmVorelModule().count(), 2);
        QVERIFY(viewer->isEnabled()); // no dialog took the window
    }
    QVERIFY(m_dialogs.isEmpty());
    QCOMPARE(m_messages->count(), 0);
}

void tst_frmAppMain::windowNumberNeverGoesDown()
{
    QVERIFY(start(*m_folder));
    choose("&File", "&New");
    choose("&File", "&New");
    scriptWindows().at(0)->close();
    scriptWindows().at(0)->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(scriptWindows().size(), 1);
    choose("&File", "&New");
    QCOMPARE(scriptWindows().last()->widget()->windowTitle(), "IVR Script 4");
}

void tst_frmAppMain::openMakesItsOwnWindow_data()
{
    QTest::addColumn<bool>("cancel");
    QTest::newRow("open-goes-into-first-window-or-takes-no-number") << false;
    QTest::newRow("cancelled-open-makes-a-window") << true;
}

void tst_frmAppMain::openMakesItsOwnWindow()
{
    QFETCH(bool, cancel);
    const QString script = QStringLiteral(IVR_TEST_DATA "/every_type.ivr");
    if (!cancel)
        m_answer = script;
    QVERIFY(start(*m_folder));
    choose("&File", "&Open...");
    QCOMPARE(scriptWindows().size(), cancel ? 1 : 2);
    frmScriptViewer *first = viewerOf(scriptWindows().constFirst());
    QCOMPARE(first->windowTitle(), "IVR Script 1");
    QCOMPARE(first->cmVorelModule().count(), 2);
    QVERIFY(first->FileName().isEmpty());
    if (!cancel) {
        frmScriptViewer *opened = viewerOf(scriptWindows().last());
        QCOMPARE(opened->windowTitle(), script);
        QCOMPARE(opened->cmVorelModule().count(), 14);
    }
    choose("&File", "&New");
    QCOMPARE(scriptWindows().last()->widget()->windowTitle(),
             cancel ? "IVR Script 2" : "IVR Script 3");
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
    choose("&File", "E&xit");
    QVERIFY(frame->isVisible());
    QCOMPARE(scriptWindows().size(), 3);
    QVERIFY(untouched->isVisible());
    QCOMPARE(m_messages->count(), 1);
    QVERIFY(m_messages->lastText().startsWith("Do you want to save changes you made to "));
}

QTEST_MAIN(tst_frmAppMain)
#include "tst_frmappmain.moc"
