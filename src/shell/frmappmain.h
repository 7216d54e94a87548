#pragma once

#include "commondialog.h"
#include "frameservices.h"

#include <QKeySequence>
#include <QMainWindow>

#include <array>

class QAction;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QToolBar;
class frmScriptViewer;

namespace ivr {
class StatusPanels;
class Toolbox;
} // namespace ivr

// The multiple-document frame: menus, the toolbar, the toolbox, the status
// bar and the script windows. It holds no script data: every command either
// manages windows or goes unchanged to the active script window. Nothing in
// it is ever greyed; a command with no fitting window does nothing.
class frmAppMain : public QMainWindow, public ivr::FrameServices
{
    Q_OBJECT

public:
    // The one main window, made at first reference.
    static frmAppMain *instance();
    // The main window if it exists, without making one.
    static frmAppMain *existing();
    // The frame's own caption. The window's title can carry the name of a
    // maximized script window after it, as MDI frames do.
    static QString caption() { return QStringLiteral("Brindlewave IVR Script Designer"); }
    ~frmAppMain() override;

    // Loads the frame (settings, the first script window, the file if it
    // exists) and shows it. A failure of the load leaves the frame hidden.
    void OpenWith(const QString &path);
    frmScriptViewer *NewScriptWindow();
    void ResetToolbox();

    QString PendingOpenPath() const { return m_PendingOpenPath; }
    int ScriptWindowCount() const { return m_ScriptWindowCount; }
    QMdiArea *mdiArea() const { return m_mdi; }
    ivr::Toolbox *toolbox() const { return m_toolbox; }
    ivr::StatusPanels *sbStatusBar() const { return m_statusBar; }
    QToolBar *XPSideMenu1() const { return m_toolboxBar; }
    QToolBar *XPSideMenu2() const { return m_toolBar; }

    // The commands, named as their menu entries.
    QAction *mnuFileNew() const { return m_mnuFileNew; }
    QAction *mnuFileOpen() const { return m_mnuFileOpen; }
    QAction *mnuFileClose() const { return m_mnuFileClose; }
    QAction *mnuFileSave() const { return m_mnuFileSave; }
    QAction *mnuFileSaveAs() const { return m_mnuFileSaveAs; }
    QAction *mnuFileProperties() const { return m_mnuFileProperties; }
    QAction *mnuFileExit() const { return m_mnuFileExit; }
    QAction *mnuEditProperty() const { return m_mnuEditProperty; }
    QAction *mnuEditDelete() const { return m_mnuEditDelete; }
    QAction *mnuViewToolbar() const { return m_mnuViewToolbar; }
    QAction *mnuViewToolBox() const { return m_mnuViewToolBox; }
    QAction *mnuViewStatusBar() const { return m_mnuViewStatusBar; }
    QAction *mnuWindowNewWindow() const { return m_mnuWindowNewWindow; }
    QAction *mnuWindowCascade() const { return m_mnuWindowCascade; }
    QAction *mnuWindowTileHorizontal() const { return m_mnuWindowTileHorizontal; }
    QAction *mnuWindowTileVertical() const { return m_mnuWindowTileVertical; }
    QAction *mnuWindowArrangeIcons() const { return m_mnuWindowArrangeIcons; }
    QAction *mnuHelpContents() const { return m_mnuHelpContents; }
    QAction *mnuHelpSearchForHelpOn() const { return m_mnuHelpSearchForHelpOn; }
    QAction *mnuHelpAbout() const { return m_mnuHelpAbout; }
    // The toolbar's buttons from the left, 0 to 6; all but 4 and 5 share a menu entry.
    QAction *cmdMain(int index) const { return m_cmdMain.at(std::size_t(index)); }

    // FrameServices.
    QWidget *frameWidget() override { return this; }
    QIcon frameIcon() const override;
    void setStatusText(const QString &text) override;
    ivr::CommonDialog &dlgCommonDialog() override { return m_dlgCommonDialog; }
    QMenu *mnuScript() override { return m_mnuScript; }
    QAction *mnuWaveFiles() override { return m_mnuWaveFiles; }
    QAction *mnuProperty() override { return m_mnuProperty; }
    void showHelpContext(int context) override;

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    frmAppMain();
    QAction *makeAction(const char *name,
                        const QString &caption,
                        void (frmAppMain::*click)(),
                        const QKeySequence &shortcut = {});
    QAction *makeSeparator(const char *name);
    void createActions();
    void createMenus();
    void createToolBars();
    void watchPointer(QWidget *widget);
    void load();
    void unload();
    void fillWindowMenu();

    // Guard A: any active child. Guard B: an active script window.
    QMdiSubWindow *activeChild() const;
    frmScriptViewer *activeScriptViewer() const;

    // Command handlers, by the name of their menu entry.
    void mnuFileNew_Click();
    void mnuFileOpen_Click();
    void mnuFileClose_Click();
    void mnuFileSave_Click();
    void mnuFileSaveAs_Click();
    void mnuFileProperties_Click();
    void mnuFileExit_Click();
    void mnuEditProperty_Click();
    void mnuEditDelete_Click();
    void cmdMain4_Click();
    void cmdMain5_Click();
    void mnuViewToolbar_Click();
    void mnuViewToolBox_Click();
    void mnuViewStatusBar_Click();
    void mnuWindowCascade_Click();
    void mnuWindowTileHorizontal_Click();
    void mnuWindowTileVertical_Click();
    void mnuWindowArrangeIcons_Click();
    void mnuHelpContents_Click();
    void mnuHelpAbout_Click();
    void showHelpTopic(const QString &topic);

    QString m_PendingOpenPath;
    int m_ScriptWindowCount = 0;
    ivr::CommonDialog m_dlgCommonDialog;
    QMdiArea *m_mdi = nullptr;
    ivr::Toolbox *m_toolbox = nullptr;
    ivr::StatusPanels *m_statusBar = nullptr;
    QToolBar *m_toolBar = nullptr;
    QToolBar *m_toolboxBar = nullptr;
    QMenu *m_mnuWindow = nullptr;
    QMenu *m_mnuScript = nullptr;
    QAction *m_mnuWaveFiles = nullptr;
    QAction *m_mnuProperty = nullptr;
    QAction *m_mnuFileNew = nullptr;
    QAction *m_mnuFileOpen = nullptr;
    QAction *m_mnuFileClose = nullptr;
    QAction *m_mnuFileSave = nullptr;
    QAction *m_mnuFileSaveAs = nullptr;
    QAction *m_mnuFileProperties = nullptr;
    QAction *m_mnuFileExit = nullptr;
    QAction *m_mnuEditProperty = nullptr;
    QAction *m_mnuEditDelete = nullptr;
    QAction *m_mnuViewToolbar = nullptr;
    QAction *m_mnuViewToolBox = nullptr;
    QAction *m_mnuViewStatusBar = nullptr;
    QAction *m_mnuWindowNewWindow = nullptr;
    QAction *m_mnuWindowCascade = nullptr;
    QAction *m_mnuWindowTileHorizontal = nullptr;
    QAction *m_mnuWindowTileVertical = nullptr;
    QAction *m_mnuWindowArrangeIcons = nullptr;
    QAction *m_mnuHelpContents = nullptr;
    QAction *m_mnuHelpSearchForHelpOn = nullptr;
    QAction *m_mnuHelpAbout = nullptr;
    std::array<QAction *, 7> m_cmdMain{};
};
