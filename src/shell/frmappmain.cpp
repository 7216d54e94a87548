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
#include <QPointer>
#include <QToolBar>

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
