#include "commondialog.h"
#include "helpwindow.h"
#include "selectedmoduletype.h"
#include "shelltesting.h"
#include "statuspanels.h"
#include "vorelmodule.h"

#include <QPointer>
#include <QScrollBar>
#include <QStandardPaths>
#include <QToolBar>

using namespace shelltesting;
using Mode = ivr::CommonDialog::Mode;

class tst_frmAppMain : public QObject
{
    Q_OBJECT

public:
    enum class Effect {
        Nothing,
        Property,
        NewWindow,
        OpenAsked,
        Saved,
        SaveAsked,
        Closed,
        Deleted,
        Run,
        Exit
    };

private slots:
    void init()
    {
        m_s.emplace();
        QVERIFY(m_s->folder.isValid());
        m_dialogs.clear();
        m_answer.reset();
        ivr::CommonDialog::setTestAnswer([this](const ivr::CommonDialog &dialog, Mode mode) {
            m_dialogs << mode;
            m_dialogTitle = dialog.DialogTitle;
            return m_answer;
        });
    }
    void cleanup()
    {
        m_s.reset();
        delete ivr::HelpWindow::existing();
        ivr::setSelectedModuleType(0);
        ivr::CommonDialog::clearTestAnswer();
    }

    // What the store holds is what the next start shows: the frame's place
    // and size, as it stands even off the screen and never drifting, and
    // each bar on its own key.
    void storedSettingsKept_data()
    {
        QTest::addColumn<QStringList>("store"); // MainLeft, MainTop, MainWidth, MainHeight
        QTest::addColumn<QRect>("shown");
        QTest::addColumn<int>("bar"); // hidden through the View menu; -1: none
        QTest::addColumn<bool>("minimized");
        const QStringList none;
        QTest::newRow("empty-store-not-1000-and-6500-twips")
                << none << QRect(67, 67, 433, 433) << -1 << false;
        QTest::newRow("stored-geometry-pulled-back-or-drifting")
                << QStringList{"-1500", "1200", "9000", "7500"} << QRect(-100, 80, 600, 500) << -1
                << false;
        QTest::newRow("toolbar-entry-hides-another-bar-or-saves-another-key")
                << none << QRect() << 0 << false;
        QTest::newRow("toolbox-entry-hides-another-bar-or-saves-another-key")
                << none << QRect() << 1 << false;
        QTest::newRow("status-bar-entry-hides-another-bar-or-saves-another-key")
                << none << QRect() << 2 << false;
        // A minimized window's place is not its own.
        QTest::newRow("minimized-unload-writes-geometry-or-drops-bars")
                << QStringList{"3000"} << QRect() << 0 << true;
    }
    void storedSettingsKept()
    {
        QFETCH(QStringList, store);
        QFETCH(QRect, shown);
        QFETCH(int, bar);
        QFETCH(bool, minimized);
        const QStringList keys{"MainLeft", "MainTop", "MainWidth", "MainHeight"};
        const QString entries[] = {"&Toolbar", "Tool&box", "&Status Bar"};
        const QString shows[] = {"ShowToolBar", "ShowToolBox", "ShowStatusBar"};
        useStoreOf(m_s->folder);
        for (int i = 0; i < store.size(); ++i)
            putStored(keys[i], store[i]);
        for (int run = 0; run < 2; ++run) {
            frmAppMain *frame = start(m_s->folder);
            QVERIFY(frame);
            QVERIFY(shown.isNull() || QRect(frame->pos(), frame->size()) == shown);
            QVERIFY(scriptWindows().constFirst()->isMaximized());
            if (minimized && run == 0)
                frame->showMinimized();
            if (bar >= 0 && run == 0)
                choose("&View", entries[bar]);
            const QList<QWidget *> bars{
                    frame->XPSideMenu2(), frame->XPSideMenu1(), frame->sbStatusBar()};
            for (int i = 0; i < 3 && !(minimized && run == 0); ++i)
                QCOMPARE(bars.at(i)->isVisible(), i != bar);
            for (int i = 0; i < 3; ++i)
                QCOMPARE(menuEntry("&View", entries[i])->isChecked(), i != bar);
            QVERIFY(closeFrame());
            for (int i = 0; i < 3; ++i)
                QCOMPARE(stored(shows[i]), i == bar ? "False" : "True");
            for (int i = 0; i < store.size(); ++i)
                QCOMPARE(stored(keys[i]), store[i]);
            QCOMPARE(stored("MainTop").isEmpty(), minimized && run == 0);
        }
    }

    // Each entry is "name|caption|shortcut", a caption "-" a separator.
    void menuTree_data()
    {
        QTest::addColumn<int>("place"); // in the bar; -1: the script popup, never in the bar
        QTest::addColumn<QString>("menu");
        QTest::addColumn<QStringList>("entries");
        QTest::newRow("file-entry-moved-renamed-or-shortcut-lost")
                << 0 << "&File"
                << QStringList{"mnuFileNew|&New|Ctrl+N",
                               "mnuFileOpen|&Open...|Ctrl+O",
                               "mnuFileClose|&Close",
                               "mnuFileBar0|-",
                               "mnuFileSave|&Save|Ctrl+S",
                               "mnuFileSaveAs|Save &As...",
                               "mnuFileBar1|-",
                               "mnuFileProperties|Propert&ies",
                               "mnuFileBar2|-",
                               "mnuFileExit|E&xit"};
        QTest::newRow("edit-entry-moved-or-renamed")
                << 1 << "&Edit"
                << QStringList{"mnuEditProperty|&Property", "mnusap|-", "mnuEditDelete|&Delete"};
        QTest::newRow("view-entry-moved-or-renamed") << 2 << "&View"
                                                     << QStringList{"mnuViewToolbar|&Toolbar",
                                                                    "mnuViewToolBox|Tool&box",
                                                                    "mnuViewStatusBar|&Status Bar"};
        QTest::newRow("window-entry-moved-or-renamed")
                << 3 << "&Window"
                << QStringList{"mnuWindowNewWindow|&New Window",
                               "mnuWindowBar0|-",
                               "mnuWindowCascade|&Cascade",
                               "mnuWindowTileHorizontal|Tile &Horizontal",
                               "mnuWindowTileVertical|Tile &Vertical",
                               "mnuWindowArrangeIcons|&Arrange Icons"};
        QTest::newRow("help-entry-moved-renamed-or-about-blank-lost")
                << 4 << "&Help"
                << QStringList{"mnuHelpContents|&Contents",
                               "mnuHelpSearchForHelpOn|&Search For Help On...",
                               "mnuHelpBar0|-",
                               "mnuHelpAbout|&About "};
        QTest::newRow("script-popup-entry-moved-or-popup-in-bar")
                << -1 << "ScriptView"
                << QStringList{"mnuWaveFiles|&Wave Files", "mnuProperty|&Property"};
    }
    void menuTree()
    {
        QFETCH(int, place);
        QFETCH(QString, menu);
        QFETCH(QStringList, entries);
        frmAppMain *frame = start(m_s->folder);
        QVERIFY(frame);
        const QList<QAction *> bar = frame->menuBar()->actions();
        QCOMPARE(bar.size(), 5);
        QMenu *found = place < 0 ? frame->mnuScript() : bar.value(place)->menu();
        QVERIFY(found);
        QCOMPARE(found->title(), menu);
        QCOMPARE(bar.contains(found->menuAction()), place >= 0);
        QStringList shown;
        for (QAction *entry : found->actions()) {
            const QString shortcut = entry->shortcut().toString(QKeySequence::PortableText);
            shown << entry->objectName() + '|' + (entry->isSeparator() ? "-" : entry->text())
                             + (shortcut.isEmpty() ? "" : '|' + shortcut);
        }
        QCOMPARE(shown, entries);
    }

    // The toolbar shares New, Open, Save, Delete and Exit with the menus.
    void commandReachesItsTarget_data()
    {
        // "cmdMain<n>|tip" or "menu|entry", then where the focus is when
        // not on a module: "|scroll" on a scroll bar, "|none" without a window.
        QTest::addColumn<QString>("command");
        QTest::addColumn<Effect>("effect");
        QTest::newRow("new-button-wrong") << "cmdMain0|Add New Script" << Effect::NewWindow;
        QTest::newRow("open-button-wrong") << "cmdMain1|Open Existing Script" << Effect::OpenAsked;
        QTest::newRow("save-button-wrong") << "cmdMain2|Save Changes" << Effect::Saved;
        QTest::newRow("delete-button-wrong") << "cmdMain3|Delete" << Effect::Deleted;
        // A dialog takes the window, and nothing that another command does happens.
        QTest::newRow("property-button-wrong") << "cmdMain4|Show Property" << Effect::Property;
        QTest::newRow("run-button-wrong") << "cmdMain5|Run Script" << Effect::Run;
        QTest::newRow("exit-button-wrong") << "cmdMain6|Exit" << Effect::Exit;
        QTest::newRow("file-close-wrong") << "&File|&Close" << Effect::Closed;
        QTest::newRow("file-save-as-wrong") << "&File|Save &As..." << Effect::SaveAsked;
        QTest::newRow("file-properties-acts") << "&File|Propert&ies" << Effect::Nothing;
        QTest::newRow("edit-property-wrong") << "&Edit|&Property" << Effect::Property;
        QTest::newRow("window-new-wrong") << "&Window|&New Window" << Effect::NewWindow;
        QTest::newRow("delete-without-child-acts") << "&Edit|&Delete|none" << Effect::Closed;
        QTest::newRow("property-with-scroll-bar-acts")
                << "&Edit|&Property|scroll" << Effect::Nothing;
    }
    void commandReachesItsTarget()
    {
        QFETCH(QString, command);
        QFETCH(Effect, effect);
        // A named, unchanged script with the focus on one of its modules.
        const QString script = m_s->folder.file("routing.ivr");
        QVERIFY(QFile::copy(QStringLiteral(IVR_TEST_DATA "/every_type.ivr"), script));
        frmAppMain *frame = start(m_s->folder, {script});
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
        const QString focus = command.section('|', 2);
        if (focus == "scroll")
            viewer->scrlVert()->setFocus();
        if (focus == "none")
            frame->mdiArea()->closeAllSubWindows();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QFile file(script);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate)); // Save must write it again
        file.close();

        const QString first = command.section('|', 0, 0), second = command.section('|', 1, 1);
        if (first.startsWith("cmdMain")) {
            QList<QAction *> buttons = frame->XPSideMenu2()->actions();
            buttons.removeIf([](QAction *action) { return action->isSeparator(); });
            QCOMPARE(buttons.size(), 7);
            QWidget *button
                    = frame->XPSideMenu2()->widgetForAction(buttons.at(first.mid(7).toInt()));
            QCOMPARE(button->toolTip(), second);
            QTest::mouseClick(button, Qt::LeftButton);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        } else {
            choose(first, second);
        }

        if (effect == Effect::Exit) {
            QVERIFY(!frmAppMain::existing());
            return;
        }
        const QMap<Effect, QList<Mode>> asked{{Effect::OpenAsked, {Mode::Open}},
                                              {Effect::SaveAsked, {Mode::Save}}};
        QCOMPARE(m_dialogs, asked.value(effect));
        if (effect == Effect::OpenAsked)
            QCOMPARE(m_dialogTitle, "Open Brindlewave IVR Script ");
        QCOMPARE(m_s->messages.count(), effect == Effect::Deleted ? 1 : 0);
        if (effect == Effect::Deleted)
            QVERIFY(m_s->messages.lastText().startsWith("Do you want to delete module [ Welcome"));
        QCOMPARE(scriptWindows().size(),
                 effect == Effect::NewWindow ? 2
                 : effect == Effect::Closed  ? 0
                                             : 1);
        if (effect == Effect::NewWindow)
            QCOMPARE(scriptWindows().last()->widget()->windowTitle(), "IVR Script 2");
        if (effect == Effect::Closed)
            return;
        QCOMPARE(viewer->isEnabled(), effect != Effect::Property);
        QCOMPARE(viewer->cmVorelModule().count(), modules - (effect == Effect::Deleted ? 1 : 0));
        if (effect == Effect::Run)
            QTRY_COMPARE(m_s->folder.runnerLog().size(), 2);
        else
            QCOMPARE(file.size() > 0, effect == Effect::Saved);
    }

    void windowNumbersNeverReused_data()
    {
        QTest::addColumn<bool>("cancel");
        QTest::newRow("open-goes-into-first-window-or-takes-no-number") << false;
        QTest::newRow("cancelled-open-makes-a-window") << true;
    }
    void windowNumbersNeverReused()
    {
        QFETCH(bool, cancel);
        const QString script = QStringLiteral(IVR_TEST_DATA "/every_type.ivr");
        if (!cancel)
            m_answer = script;
        QVERIFY(start(m_s->folder));
        choose("&File", "&Open...");
        QCOMPARE(scriptWindows().size(), cancel ? 1 : 2);
        frmScriptViewer *first = viewerOf(scriptWindows().constFirst());
        QCOMPARE(first->windowTitle(), "IVR Script 1");
        QVERIFY(first->cmVorelModule().count() == 2 && first->FileName().isEmpty());
        if (!cancel) {
            frmScriptViewer *opened = viewerOf(scriptWindows().last());
            QCOMPARE(opened->windowTitle(), script);
            QCOMPARE(opened->cmVorelModule().count(), 14);
        }
        choose("&File", "&New");
        QCOMPARE(scriptWindows().last()->widget()->windowTitle(),
                 cancel ? "IVR Script 2" : "IVR Script 3");
        // Closing windows gives no number back.
        for (QMdiSubWindow *child : scriptWindows())
            child->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        choose("&File", "&New");
        QCOMPARE(scriptWindows().last()->widget()->windowTitle(),
                 cancel ? "IVR Script 3" : "IVR Script 4");
    }

    void frameCloseStopsAtRefusingWindow()
    {
        frmAppMain *frame = start(m_s->folder);
        QVERIFY(frame);
        frmScriptViewer *edited = frame->NewScriptWindow();
        ivr::setSelectedModuleType(3);
        QTest::mouseRelease(edited->picMain(), Qt::LeftButton, {}, QPoint(200, 200));
        ivr::setSelectedModuleType(0);
        QVERIFY(edited->Changed());
        frmScriptViewer *untouched = frame->NewScriptWindow();

        m_s->messages.answer(QMessageBox::Cancel);
        choose("&File", "E&xit");
        QVERIFY(frame->isVisible() && untouched->isVisible());
        QCOMPARE(scriptWindows().size(), 3);
        QCOMPARE(m_s->messages.count(), 1);
        QVERIFY(m_s->messages.lastText().startsWith("Do you want to save changes you made to "));
    }

    void entryOpensItsTopic_data()
    {
        QTest::addColumn<QString>("entry"); // a menu entry, F1, or a dialog's help context
        QTest::addColumn<QString>("topic"); // empty: the help file is gone
        QTest::newRow("contents-opens-another-page") << "&Contents"
                                                     << "bdw_d_designer.htm";
        QTest::newRow("search-opens-another-page") << "&Search For Help On..."
                                                   << "bdw_d_designer.htm";
        QTest::newRow("f1-in-main-window-does-nothing") << "F1"
                                                        << "bdw_d_designer.htm";
        QTest::newRow("dialog-context-opens-wrong-topic") << "7"
                                                          << "bdw_d_record.htm";
        QTest::newRow("missing-help-file-not-said-in-window") << "&Contents"
                                                              << "";
    }
    void entryOpensItsTopic()
    {
        QFETCH(QString, entry);
        QFETCH(QString, topic);
        if (topic.isEmpty())
            QFile::remove(m_s->folder.file("BdwIVRS.qch"));
        frmAppMain *frame = start(m_s->folder);
        QVERIFY(frame);
        bool context = false;
        const int id = entry.toInt(&context);
        if (context) {
            frame->showHelpContext(id);
        } else if (entry == "F1") {
            frame->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(frame));
            QTest::keyClick(frame, Qt::Key_F1);
        } else {
            choose("&Help", entry);
        }
        ivr::HelpWindow *help = ivr::HelpWindow::existing();
        QVERIFY(help && help->isVisible() && frame->isVisible());
        QCOMPARE(help->helpFound(), !topic.isEmpty());
        if (topic.isEmpty())
            QVERIFY(help->pageText().contains("could not be found"));
        else
            QVERIFY(help->currentUrl().fileName() == topic
                    && !help->pageText().trimmed().isEmpty());
        QCOMPARE(m_s->messages.count(), 0);
    }

    void unwritableCacheIsSaidInTheWindow()
    {
        // The cache folder would lie under a regular file.
        const QString blocked = m_s->folder.file("blocked");
        QVERIFY(QFile(blocked).open(QIODevice::WriteOnly));
        qputenv("XDG_CACHE_HOME", QFile::encodeName(blocked + "/cache"));
        const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
        QVERIFY(cache.startsWith(blocked));
        ivr::HelpWindow::setHelpFile(m_s->folder.file("BdwIVRS.qch"));
        ivr::HelpWindow *help = ivr::HelpWindow::instance(nullptr);
        help->showTopic("bdw_d_designer.htm");
        QVERIFY(!help->helpFound());
        const QString page = help->pageText();
        QVERIFY2(page.contains(cache) && page.contains("cannot be written"), qPrintable(page));
        QVERIFY(!page.contains("could not be found"));
    }

    // The process ends with its last form: the help window must not outlive the frame.
    void exitTakesTheHelpWindowAlong()
    {
        QVERIFY(start(m_s->folder));
        choose("&Help", "&Contents");
        QPointer<ivr::HelpWindow> help = ivr::HelpWindow::existing();
        QVERIFY(help && help->isVisible());
        choose("&File", "E&xit");
        QVERIFY(!frmAppMain::existing() && !help);
        for (QWidget *window : QApplication::topLevelWidgets())
            QVERIFY2(!window->isVisible(), qPrintable(window->objectName()));
    }

private:
    std::optional<Session> m_s;
    std::optional<QString> m_answer;
    QList<Mode> m_dialogs;
    QString m_dialogTitle;
};

QTEST_MAIN(tst_frmAppMain)
#include "tst_frmappmain.moc"
