// The frame's commands (one action per menu entry, shared with the toolbar),
// its menus and its two bars.

#include "frmappmain.h"

#include "shellicons.h"
#include "toolbox.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolBar>

QAction *frmAppMain::makeAction(const char *name,
                                const QString &caption,
                                void (frmAppMain::*click)(),
                                const QKeySequence &shortcut)
{
    auto *action = new QAction(caption, this);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(shortcut);
    if (click)
        connect(action, &QAction::triggered, this, click);
    return action;
}

QAction *frmAppMain::makeSeparator(const char *name)
{
    auto *separator = new QAction(this);
    separator->setObjectName(QLatin1String(name));
    separator->setSeparator(true);
    return separator;
}

void frmAppMain::createActions()
{
    using Keys = QKeySequence;
    m_mnuFileNew = makeAction("mnuFileNew", "&New", &frmAppMain::mnuFileNew_Click, Keys::New);
    m_mnuFileOpen
            = makeAction("mnuFileOpen", "&Open...", &frmAppMain::mnuFileOpen_Click, Keys::Open);
    m_mnuFileClose = makeAction("mnuFileClose", "&Close", &frmAppMain::mnuFileClose_Click);
    m_mnuFileSave = makeAction("mnuFileSave", "&Save", &frmAppMain::mnuFileSave_Click, Keys::Save);
    m_mnuFileSaveAs = makeAction("mnuFileSaveAs", "Save &As...", &frmAppMain::mnuFileSaveAs_Click);
    m_mnuFileProperties
            = makeAction("mnuFileProperties", "Propert&ies", &frmAppMain::mnuFileProperties_Click);
    m_mnuFileExit = makeAction("mnuFileExit", "E&xit", &frmAppMain::mnuFileExit_Click);
    m_mnuEditProperty
            = makeAction("mnuEditProperty", "&Property", &frmAppMain::mnuEditProperty_Click);
    m_mnuEditDelete = makeAction("mnuEditDelete", "&Delete", &frmAppMain::mnuEditDelete_Click);
    m_mnuViewToolbar = makeAction("mnuViewToolbar", "&Toolbar", &frmAppMain::mnuViewToolbar_Click);
    m_mnuViewToolBox = makeAction("mnuViewToolBox", "Tool&box", &frmAppMain::mnuViewToolBox_Click);
    m_mnuViewStatusBar
            = makeAction("mnuViewStatusBar", "&Status Bar", &frmAppMain::mnuViewStatusBar_Click);
    for (QAction *view : {m_mnuViewToolbar, m_mnuViewToolBox, m_mnuViewStatusBar})
        view->setCheckable(true);
    m_mnuWindowNewWindow
            = makeAction("mnuWindowNewWindow", "&New Window", &frmAppMain::mnuFileNew_Click);
    m_mnuWindowCascade
            = makeAction("mnuWindowCascade", "&Cascade", &frmAppMain::mnuWindowCascade_Click);
    m_mnuWindowTileHorizontal = makeAction("mnuWindowTileHorizontal",
                                           "Tile &Horizontal",
                                           &frmAppMain::mnuWindowTileHorizontal_Click);
    m_mnuWindowTileVertical = makeAction(
            "mnuWindowTileVertical", "Tile &Vertical", &frmAppMain::mnuWindowTileVertical_Click);
    m_mnuWindowArrangeIcons = makeAction(
            "mnuWindowArrangeIcons", "&Arrange Icons", &frmAppMain::mnuWindowArrangeIcons_Click);
    m_mnuHelpContents
            = makeAction("mnuHelpContents", "&Contents", &frmAppMain::mnuHelpContents_Click);
    m_mnuHelpSearchForHelpOn = makeAction(
            "mnuHelpSearchForHelpOn", "&Search For Help On...", &frmAppMain::mnuHelpContents_Click);
    m_mnuHelpAbout = makeAction("mnuHelpAbout", "&About ", &frmAppMain::mnuHelpAbout_Click);

    // F1 has no menu entry: it opens the frame's own help context.
    QAction *helpKey = makeAction("helpKey", {}, nullptr, Keys::HelpContents);
    connect(helpKey, &QAction::triggered, this, [this] { showHelpContext(1); });
    addAction(helpKey);

    // The toolbar shares the menu's actions; the button shows the tool tip.
    m_cmdMain = {m_mnuFileNew,
                 m_mnuFileOpen,
                 m_mnuFileSave,
                 m_mnuEditDelete,
                 makeAction("cmdMain4", "Show Property", &frmAppMain::cmdMain4_Click),
                 makeAction("cmdMain5", "Run Script", &frmAppMain::cmdMain5_Click),
                 m_mnuFileExit};
    const char *const tips[] = {"Add New Script",
                                "Open Existing Script",
                                "Save Changes",
                                "Delete",
                                "Show Property",
                                "Run Script",
                                "Exit"};
    for (int index = 0; index < 7; ++index) {
        QAction *action = cmdMain(index);
        action->setToolTip(QLatin1String(tips[index]));
        action->setIcon(ivr::ShellIcons::toolbar(index));
        action->setIconVisibleInMenu(false);
    }

    m_mnuWaveFiles = new QAction(QStringLiteral("&Wave Files"), this);
    m_mnuWaveFiles->setObjectName(QStringLiteral("mnuWaveFiles"));
    m_mnuProperty = new QAction(QStringLiteral("&Property"), this);
    m_mnuProperty->setObjectName(QStringLiteral("mnuProperty"));
}

void frmAppMain::createMenus()
{
    QMenuBar *bar = menuBar();
    bar->setAccessibleName(QStringLiteral("Menu bar"));
    auto addMenu
            = [bar](const char *name, const QString &caption, const QList<QAction *> &entries) {
                  QMenu *menu = bar->addMenu(caption);
                  menu->setObjectName(QLatin1String(name));
                  menu->addActions(entries);
                  return menu;
              };
    addMenu("mnuFile",
            "&File",
            {m_mnuFileNew,
             m_mnuFileOpen,
             m_mnuFileClose,
             makeSeparator("mnuFileBar0"),
             m_mnuFileSave,
             m_mnuFileSaveAs,
             makeSeparator("mnuFileBar1"),
             m_mnuFileProperties,
             makeSeparator("mnuFileBar2"),
             m_mnuFileExit});
    addMenu("mnuEdit", "&Edit", {m_mnuEditProperty, makeSeparator("mnusap"), m_mnuEditDelete});
    addMenu("mnuView", "&View", {m_mnuViewToolbar, m_mnuViewToolBox, m_mnuViewStatusBar});
    m_mnuWindow = addMenu("mnuWindow",
                          "&Window",
                          {m_mnuWindowNewWindow,
                           makeSeparator("mnuWindowBar0"),
                           m_mnuWindowCascade,
                           m_mnuWindowTileHorizontal,
                           m_mnuWindowTileVertical,
                           m_mnuWindowArrangeIcons});
    connect(m_mnuWindow, &QMenu::aboutToShow, this, &frmAppMain::fillWindowMenu);
    addMenu("mnuHelp",
            "&Help",
            {m_mnuHelpContents,
             m_mnuHelpSearchForHelpOn,
             makeSeparator("mnuHelpBar0"),
             m_mnuHelpAbout});

    // The canvas's popup, never in the bar. Its entries' clicks belong to
    // whichever script window is active.
    m_mnuScript = new QMenu(QStringLiteral("ScriptView"), this);
    m_mnuScript->setObjectName(QStringLiteral("mnuScript"));
    m_mnuScript->addAction(m_mnuWaveFiles);
    m_mnuScript->addAction(m_mnuProperty);
}

void frmAppMain::fillWindowMenu()
{
    // Below the fixed entries: the list of the open windows.
    const QList<QAction *> entries = m_mnuWindow->actions();
    for (QAction *entry : entries) {
        if (entry->property("windowListEntry").toBool()) {
            m_mnuWindow->removeAction(entry);
            entry->deleteLater();
        }
    }
    const QList<QMdiSubWindow *> windows = m_mdi->subWindowList(QMdiArea::CreationOrder);
    if (windows.isEmpty())
        return;
    QAction *separator = m_mnuWindow->addSeparator();
    separator->setProperty("windowListEntry", true);
    for (int i = 0; i < windows.size(); ++i) {
        QMdiSubWindow *window = windows.at(i);
        const QString text = i < 9 ? QStringLiteral("&%1 %2").arg(i + 1).arg(window->windowTitle())
                                   : QStringLiteral("%1 %2").arg(i + 1).arg(window->windowTitle());
        QAction *entry = m_mnuWindow->addAction(text);
        entry->setProperty("windowListEntry", true);
        entry->setCheckable(true);
        entry->setChecked(window == m_mdi->activeSubWindow());
        QPointer<QMdiSubWindow> target(window);
        connect(entry, &QAction::triggered, this, [this, target] {
            if (target)
                m_mdi->setActiveSubWindow(target);
        });
    }
}

void frmAppMain::createToolBars()
{
    m_toolBar = addToolBar(QStringLiteral("Toolbar"));
    m_toolBar->setObjectName(QStringLiteral("XPSideMenu2"));
    m_toolBar->setAccessibleName(QStringLiteral("Toolbar"));
    m_toolBar->setMovable(false);
    m_toolBar->setFloatable(false);
    m_toolBar->setIconSize(QSize(42, 42));
    for (int index = 0; index < 7; ++index) {
        QAction *action = cmdMain(index);
        m_toolBar->addAction(action);
        if (QWidget *button = m_toolBar->widgetForAction(action)) {
            button->setObjectName(QStringLiteral("cmdMain%1").arg(index));
            button->setAccessibleName(action->toolTip());
            button->setFocusPolicy(Qt::TabFocus);
        }
        if (index == 2 || index == 3 || index == 5)
            m_toolBar->addSeparator();
    }

    m_toolboxBar = new QToolBar(QStringLiteral("Toolbox"), this);
    m_toolboxBar->setObjectName(QStringLiteral("XPSideMenu1"));
    m_toolboxBar->setAccessibleName(QStringLiteral("Toolbox"));
    m_toolboxBar->setMovable(false);
    m_toolboxBar->setFloatable(false);
    // A small window scrolls the toolbox rather than growing to hold it, so
    // that the stored size is the size the window gets.
    auto *scroller = new QScrollArea(m_toolboxBar);
    scroller->setObjectName(QStringLiteral("XPSideMenu1Scroller"));
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller->setWidget(m_toolbox);
    scroller->setWidgetResizable(true);
    scroller->setMinimumWidth(m_toolbox->sizeHint().width()
                              + scroller->verticalScrollBar()->sizeHint().width());
    m_toolboxBar->addWidget(scroller);
    addToolBar(Qt::LeftToolBarArea, m_toolboxBar);
}
