#pragma once

#include "clsdrawline.h"
#include "commondialog.h"
#include "drawlineform.h"
#include "moduledata.h"
#include "scripthost.h"

#include <QJsonObject>
#include <QList>
#include <QMetaObject>
#include <QPointer>
#include <QWidget>

#include <map>
#include <memory>

class QMdiSubWindow;
class QRubberBand;
class QScrollBar;
class VorelDirection;
class VorelModule;

namespace ivr {
class ModuleList;
class PropertyDialog;
class IndexByKey;
class ScriptCanvas;
} // namespace ivr

// One script on its canvas: the modules, the arrows, the link matrix and the
// script-level module, with open, save, run and the property dialog
// dispatch. The frame reaches it through the public operations below and
// sets its caption ("IVR Script n") with setWindowTitle().
class frmScriptViewer : public QWidget, public ivr::DrawLineForm, public ivr::ScriptHost
{
    Q_OBJECT

public:
    // Module and arrow indices are 16-bit: the highest either can take.
    static constexpr int HighestIndex = 32767;
    // Canvas size in twips.
    static constexpr float CanvasWidth = 85200;
    static constexpr float CanvasHeight = 54645;

    explicit frmScriptViewer(QWidget *parent = nullptr);
    ~frmScriptViewer() override;

    // Save (false) or Save As (true); true when the library reports the file written.
    bool SaveScript(bool SaveAs);
    void OpenScript(const QString &path);
    void RunScript();
    void ShowProperty();
    void ShowPropertyDialog();
    void DeleteModule();

    QString FileName() const { return m_FileName; }
    void setFileName(const QString &fileName) { m_FileName = fileName; }
    bool Changed() const { return m_Changed; }

    // The close question; true when the window may close.
    bool QueryUnload();
    // The frame asks every window before it closes any; then the window's own
    // close step must not ask again.
    void setQueryAnswered(bool answered) { m_queryAnswered = answered; }

    // False, after a critical message, when the script holds all the modules
    // a window can hold.
    bool AddModule(qint16 Type, float X, float Y);
    // Both throw IvrError, saying so, when every index up to the highest is
    // taken.
    qint16 NextFreeModule();
    qint16 NextFreeArrow();
    void RemoveModule(qint16 Index);

    // The canvas menu's two entries act on the active window only. The window
    // follows its MDI sub-window by itself; outside an MDI area the owner
    // calls this.
    void setScriptMenuAttached(bool attached);

    // DrawLineForm and ScriptHost.
    ControlArray<VorelModule> &cmVorelModule() override { return m_cmVorelModule; }
    ControlArray<VorelDirection> &VorelDirection1() override { return m_VorelDirection1; }
    QWidget *picMain() override;
    ivr::clsDrawLine &DrawLine() override { return m_DrawLine; }
    ivr::ModuleDataPtr CommonModule() const override { return m_CommonModule; }
    ivr::CommonDialog &commonDialog() override;
    QWidget *hostWidget() override { return this; }
    // The dialog of a class that is open for this window, if any.
    ivr::PropertyDialog *openDialog(const QString &dialogName) const;

    QScrollBar *scrlVert() const { return m_scrlVert; }
    QScrollBar *scrlHori() const { return m_scrlHori; }

    QSize sizeHint() const override;

protected:
    void closeEvent(QCloseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    bool event(QEvent *event) override;

private:
    // Load and canvas.
    VorelModule *makeModule(qint16 index);
    VorelDirection *makeArrow(qint16 index);
    void placeBars();
    void followSubWindow();
    void canvasMouseMove();
    void canvasMouseUp(Qt::MouseButton button, QPointF pos, QPointF globalPos);
    void setStatusText(const QString &text);

    // Dragging a module.
    void moduleMouseDown(qint16 index, Qt::MouseButton button, float x, float y);
    void moduleMouseMove(qint16 index, Qt::MouseButtons buttons, QPointF globalPos);
    void moduleMouseUp(qint16 index, Qt::MouseButton button, QPointF globalPos);
    void dropOnCanvas(VorelModule *source, float X, float Y);

    // Open and save.
    void placeModules(const ivr::ModuleList &list, ivr::IndexByKey &keys);
    void linkModules(const ivr::ModuleList &list, ivr::IndexByKey &keys);
    bool fitsWindow(const QString &path, const ivr::ModuleList &list);
    void AddLink(ivr::IndexByKey &keys, const QString &FromKey, const QString &ToKey);
    bool collectModules(ivr::ModuleList &list);
    bool keepOldFile();

    // Property dialogs.
    void EditModule(qint16 Index);
    void FinishEdit(qint16 Index, bool Edited);
    void editCommonModule();
    void editWaveFiles();
    void popupDialog(const QString &dialogName, ivr::ModuleDataPtr module, qint16 Index);
    bool dialogOpen() const;
    void unloadDialogs();

    ControlArray<VorelModule> m_cmVorelModule;
    ControlArray<VorelDirection> m_VorelDirection1;
    ivr::clsDrawLine m_DrawLine;
    ivr::ModuleDataPtr m_CommonModule;
    // What the file held at its top level that this program does not know,
    // written back at every save.
    QJsonObject m_fileKeys;
    QString m_FileName;
    // The file whose old contents a save may replace: loaded or written
    // here, picked in the save dialog, or kept as a backup.
    QString m_ownFile;
    bool m_Changed = false;
    bool m_queryAnswered = false;
    float m_GrabX = 0;
    float m_GrabY = 0;
    QList<qint16> m_OldArrows;
    QString m_OldName;

    ivr::ScriptCanvas *m_picMain = nullptr;
    QScrollBar *m_scrlVert = nullptr;
    QScrollBar *m_scrlHori = nullptr;
    QRubberBand *m_dragOutline = nullptr;
    QPointer<VorelModule> m_dragSource;
    QPointer<QMdiSubWindow> m_subWindow;
    // One member per dialog class, each set to a fresh dialog at its opening.
    std::map<QString, QPointer<ivr::PropertyDialog>> m_dialogs;
    QMetaObject::Connection m_waveFilesClick;
    QMetaObject::Connection m_propertyClick;
    std::unique_ptr<ivr::CommonDialog> m_localDialog;
};
