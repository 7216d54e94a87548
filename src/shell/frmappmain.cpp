#include "frmappmain.h"

#include "frmscriptviewer.h"
#include "frmsplash.h"
#include "helpwindow.h"
#include "ivrerror.h"
#include "mainsettings.h"
#include "mdiarranger.h"
#include "msgbox.h"
#include "screenpointer.h"
#include "scriptutility.h"
#include "selectedmoduletype.h"
#include "shellicons.h"
#include "statuspanels.h"
#include "toolbox.h"
#include "unhandledfailure.h"

#include <QAction>
#include <QCloseEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolBar>
#include <QToolButton>

namespace {

QPointer<frmAppMain> g_instance;

constexpr float TwipsPerPixel = 15.0f;

const char kDesignerTopic[] = "bdw_d_designer.htm";

} // namespace

frmAppMain *frmAppMain::instance()
{
    if (!g_instance)
        g_instance = new frmAppMain;
    return g_instance;
}

frmAppMain *frmAppMain::existing()
{
    return g_instance;
}

frmAppMain::frmAppMain()
    : m_mdi(new QMdiArea(this))
    , m_toolbox(new ivr::Toolbox(this))
    , m_statusBar(new ivr::StatusPanels(this))
{
    setObjectName(QStringLiteral("frmAppMain"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(caption());
    setAccessibleName(windowTitle());
    setWindowIcon(ivr::ShellIcons::window());
    setContextMenuPolicy(Qt::PreventContextMenu);

    m_mdi->setObjectName(QStringLiteral("MDIClient"));
    m_mdi->setAccessibleName(QStringLiteral("Script windows"));
    m_mdi->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_mdi->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(m_mdi);
    setStatusBar(m_statusBar);

    createActions();
    createMenus();
    createToolBars();
    for (QWidget *bar : {static_cast<QWidget *>(m_toolBar),
                         static_cast<QWidget *>(m_toolboxBar),
                         static_cast<QWidget *>(m_statusBar),
                         m_mdi->viewport()})
        watchPointer(bar);
    ivr::setAppMain(this);
}

frmAppMain::~frmAppMain()
{
    if (ivr::appMain() == this)
        ivr::setAppMain(nullptr);
}

QIcon frmAppMain::frameIcon() const
{
    return windowIcon();
}

void frmAppMain::setStatusText(const QString &text)
{
    m_statusBar->setPanelText(text);
}

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

void frmAppMain::watchPointer(QWidget *widget)
{
    widget->setMouseTracking(true);
    widget->installEventFilter(this);
    // Direct children only: the recursion reaches the rest, each once.
    for (QWidget *child : widget->findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
        watchPointer(child);
}

bool frmAppMain::eventFilter(QObject *watched, QEvent *event)
{
    // Moving over the bars undoes the arrow or cross that the canvas sets.
    if (event->type() == QEvent::MouseMove || event->type() == QEvent::HoverMove)
        ivr::ScreenPointer::set(ivr::ScreenPointer::Default);
    return QMainWindow::eventFilter(watched, event);
}

void frmAppMain::OpenWith(const QString &path)
{
    m_PendingOpenPath = path;
    load();
    show();
    ivr::UnhandledFailure::setMainWindowShown(true);
}

void frmAppMain::load()
{
    ivr::MainSettings settings;
    settings.read();
    move(qRound(settings.MainLeft / TwipsPerPixel), qRound(settings.MainTop / TwipsPerPixel));
    resize(qRound(settings.MainWidth / TwipsPerPixel), qRound(settings.MainHeight / TwipsPerPixel));
    m_mnuViewToolbar->setChecked(settings.ShowToolBar);
    m_mnuViewStatusBar->setChecked(settings.ShowStatusBar);
    m_mnuViewToolBox->setChecked(settings.ShowToolBox);
    m_toolboxBar->setVisible(settings.ShowToolBox);
    m_statusBar->setVisible(settings.ShowStatusBar);
    m_toolBar->setVisible(settings.ShowToolBar);

    ivr::setSelectedModuleType(0);
    frmScriptViewer *first = NewScriptWindow();
    // Every run begins with the first window maximized, whatever the last did.
    QMdiSubWindow *child = m_mdi->activeSubWindow();
    if (!child)
        child = qobject_cast<QMdiSubWindow *>(first->parentWidget());
    if (child)
        child->showMaximized();
    if (ivr::ScriptUtility::FileExists(m_PendingOpenPath))
        first->OpenScript(m_PendingOpenPath);
}

void frmAppMain::unload()
{
    ivr::MainSettings settings;
    settings.MainLeft = float(pos().x()) * TwipsPerPixel;
    settings.MainTop = float(pos().y()) * TwipsPerPixel;
    settings.MainWidth = float(width()) * TwipsPerPixel;
    settings.MainHeight = float(height()) * TwipsPerPixel;
    settings.ShowToolBar = m_mnuViewToolbar->isChecked();
    settings.ShowStatusBar = m_mnuViewStatusBar->isChecked();
    settings.ShowToolBox = m_mnuViewToolBox->isChecked();
    settings.write(isMinimized());
}

void frmAppMain::closeEvent(QCloseEvent *event)
{
    // Every script window is asked before any closes, and the first refusal
    // keeps all of them (and the frame) open.
    QList<frmScriptViewer *> viewers;
    for (QMdiSubWindow *child : m_mdi->subWindowList(QMdiArea::CreationOrder)) {
        if (auto *viewer = qobject_cast<frmScriptViewer *>(child->widget()))
            viewers << viewer;
    }
    for (frmScriptViewer *viewer : std::as_const(viewers)) {
        if (!viewer->QueryUnload()) {
            event->ignore();
            return;
        }
    }
    for (frmScriptViewer *viewer : std::as_const(viewers))
        viewer->setQueryAnswered(true);
    unload();
    event->accept();
}

frmScriptViewer *frmAppMain::NewScriptWindow()
{
    ++m_ScriptWindowCount;
    auto *viewer = new frmScriptViewer;
    viewer->setWindowTitle(QStringLiteral("IVR Script %1").arg(m_ScriptWindowCount));
    QMdiSubWindow *child = m_mdi->addSubWindow(viewer);
    child->setAttribute(Qt::WA_DeleteOnClose);
    // Every new window starts at the size it was laid out at, which is also
    // what a restore brings back to the window that starts maximized.
    child->resize(child->sizeHint());
    viewer->show();
    m_mdi->setActiveSubWindow(child);
    return viewer;
}

void frmAppMain::ResetToolbox()
{
    m_toolbox->ResetToolbox();
}

QMdiSubWindow *frmAppMain::activeChild() const
{
    return m_mdi->activeSubWindow();
}

frmScriptViewer *frmAppMain::activeScriptViewer() const
{
    QMdiSubWindow *child = activeChild();
    return child ? qobject_cast<frmScriptViewer *>(child->widget()) : nullptr;
}

void frmAppMain::mnuFileNew_Click()
{
    ivr::ScreenPointer::set(ivr::ScreenPointer::Default);
    NewScriptWindow();
}

void frmAppMain::mnuFileOpen_Click()
{
    ivr::ScreenPointer::set(ivr::ScreenPointer::Default);
    const QString extension = ivr::ScriptUtility::ScriptExtension();
    m_dlgCommonDialog.DialogTitle = QStringLiteral("Open Brindlewave IVR Script ");
    m_dlgCommonDialog.CancelError = false;
    m_dlgCommonDialog.Filter = QStringLiteral("Brindlewave IVR Script (*.") + extension
                               + QStringLiteral(") |*.") + extension;
    using Dialog = ivr::CommonDialog;
    m_dlgCommonDialog.Flags
            = Dialog::Explorer | Dialog::FileMustExist | Dialog::ShowHelp | Dialog::HideReadOnly;
    m_dlgCommonDialog.FileName.clear();
    m_dlgCommonDialog.ShowOpen(this);
    if (m_dlgCommonDialog.FileName.isEmpty())
        return;
    // A new window every time, even when the open then fails.
    const QString name = m_dlgCommonDialog.FileName;
    NewScriptWindow()->OpenScript(name);
}

void frmAppMain::mnuFileClose_Click()
{
    if (activeScriptViewer())
        activeChild()->close();
}

void frmAppMain::mnuFileSave_Click()
{
    ivr::ScreenPointer::set(ivr::ScreenPointer::Default);
    if (frmScriptViewer *viewer = activeScriptViewer())
        viewer->SaveScript(false);
}

void frmAppMain::mnuFileSaveAs_Click()
{
    if (frmScriptViewer *viewer = activeScriptViewer())
        viewer->SaveScript(true);
}

void frmAppMain::mnuFileProperties_Click()
{
    // The entry exists and does nothing, on purpose.
}

void frmAppMain::mnuFileExit_Click()
{
    ivr::ScreenPointer::set(ivr::ScreenPointer::Default);
    close();
}

// Guard A: every child is a script window, so the test for one is only a
// safeguard against calling into a window of another kind.
void frmAppMain::mnuEditProperty_Click()
{
    if (!activeChild())
        return;
    if (frmScriptViewer *viewer = activeScriptViewer())
        viewer->ShowProperty();
}

void frmAppMain::mnuEditDelete_Click()
{
    ivr::ScreenPointer::set(ivr::ScreenPointer::Default);
    if (!activeChild())
        return;
    if (frmScriptViewer *viewer = activeScriptViewer())
        viewer->DeleteModule();
}

void frmAppMain::cmdMain4_Click()
{
    ivr::ScreenPointer::set(ivr::ScreenPointer::Default);
    if (frmScriptViewer *viewer = activeScriptViewer())
        viewer->ShowPropertyDialog();
}

void frmAppMain::cmdMain5_Click()
{
    ivr::ScreenPointer::set(ivr::ScreenPointer::Default);
    if (frmScriptViewer *viewer = activeScriptViewer())
        viewer->RunScript();
}

// The check mark has been inverted by the action itself.
void frmAppMain::mnuViewToolbar_Click()
{
    m_toolBar->setVisible(m_mnuViewToolbar->isChecked());
}

void frmAppMain::mnuViewToolBox_Click()
{
    m_toolboxBar->setVisible(m_mnuViewToolBox->isChecked());
}

void frmAppMain::mnuViewStatusBar_Click()
{
    m_statusBar->setVisible(m_mnuViewStatusBar->isChecked());
}

void frmAppMain::mnuWindowCascade_Click()
{
    ivr::MdiArranger::arrange(m_mdi, ivr::MdiArranger::Cascade);
}

void frmAppMain::mnuWindowTileHorizontal_Click()
{
    ivr::MdiArranger::arrange(m_mdi, ivr::MdiArranger::TileHorizontal);
}

void frmAppMain::mnuWindowTileVertical_Click()
{
    ivr::MdiArranger::arrange(m_mdi, ivr::MdiArranger::TileVertical);
}

void frmAppMain::mnuWindowArrangeIcons_Click()
{
    ivr::MdiArranger::arrange(m_mdi, ivr::MdiArranger::ArrangeIcons);
}

void frmAppMain::mnuHelpContents_Click()
{
    showHelpTopic(QString::fromLatin1(kDesignerTopic));
}

void frmAppMain::showHelpContext(int context)
{
    const QString topic = ivr::HelpWindow::topicForContext(context);
    showHelpTopic(topic.isEmpty() ? QString::fromLatin1(kDesignerTopic) : topic);
}

void frmAppMain::showHelpTopic(const QString &topic)
{
    if (ivr::HelpWindow::helpFile().isEmpty()) {
        ivr::MsgBox::show(QStringLiteral("Unable to display Help Contents. There is no Help "
                                         "associated with this project."),
                          QMessageBox::Information,
                          QMessageBox::Ok,
                          caption());
        return;
    }
    try {
        ivr::HelpWindow::instance(this)->showTopic(topic);
    } catch (const ivr::IvrError &error) {
        ivr::MsgBox::show(error.description());
    }
}

void frmAppMain::mnuHelpAbout_Click()
{
    frmSplash about;
    about.ShowMe(true);
}
