// The script window's side of the property dialogs: which dialog a module
// gets, what the window notes before it opens and how it turns the marks
// the dialog left in the link matrix into arrows.

#include "frmscriptviewer.h"

#include "ivrerror.h"
#include "moduletypes.h"
#include "screenpointer.h"
#include "scriptcanvas.h"
#include "voreldirection.h"
#include "vorelmodule.h"

#include <QDialog>

using namespace ivr;

void frmScriptViewer::ShowProperty()
{
    auto *active = qobject_cast<VorelModule *>(focusWidget());
    if (active && active->parentWidget() == picMain())
        EditModule(active->Index());
}

void frmScriptViewer::ShowPropertyDialog()
{
    // No other control of the window ever holds the focus under that type
    // name, so the test for an active control adds nothing here.
    auto *active = qobject_cast<VorelModule *>(focusWidget());
    if (active && active->parentWidget() == picMain())
        EditModule(active->Index());
}

void frmScriptViewer::EditModule(qint16 Index)
{
    if (!m_cmVorelModule.exists(Index))
        return;
    setEnabled(false);
    ScreenPointer::set(ScreenPointer::Hourglass);
    const qint16 top = m_cmVorelModule.ubound();
    m_OldArrows.fill(0, top + 1);
    for (qint16 j = 0; j <= top; ++j)
        m_OldArrows[j] = m_DrawLine.LineMatrix(Index, j);
    VorelModule *module = m_cmVorelModule.at(Index);
    m_OldName = module->moduleData()->Name();

    m_dialog = makeDialog(ModuleTypes::info(module->ModuleType()).dialogName, Index);
    if (!m_dialog)
        setEnabled(true);
    ScreenPointer::set(ScreenPointer::Default);
}

void frmScriptViewer::FinishEdit(qint16 Index, bool Edited)
{
    setEnabled(true);
    if (Edited && m_cmVorelModule.exists(Index)) {
        VorelModule *module = m_cmVorelModule.at(Index);
        module->setCaption(module->moduleData()->Name());
        // Every arrow of the old row goes, whether or not its link survived;
        // the dialog's marks then get fresh arrows.
        for (const qint16 old : std::as_const(m_OldArrows)) {
            if (old > 0 && m_VorelDirection1.exists(old))
                m_VorelDirection1.unload(old);
        }
        for (qint16 j = 0; j < m_OldArrows.size(); ++j) {
            if (m_DrawLine.LineMatrix(Index, j) > 0) {
                const qint16 k = NextFreeArrow();
                m_VorelDirection1.load(k);
                m_DrawLine.setLineMatrix(Index, j, k);
            }
        }
        const QString newName = module->moduleData()->Name();
        m_DrawLine.RedefineModule(Index, *this, 1, newName != m_OldName ? m_OldName : QString());
    }
    m_OldName.clear();
    // An assignment on purpose: a dialog closed without an edit leaves the
    // script clean, whatever it was before.
    m_Changed = Edited;
    if (m_cmVorelModule.exists(Index))
        m_cmVorelModule.at(Index)->setFocus();
}

void frmScriptViewer::editCommonModule()
{
    setEnabled(false);
    m_dialog = makeDialog(QStringLiteral("FrmCommon"), -1);
    if (!m_dialog)
        setEnabled(true);
}

void frmScriptViewer::editWaveFiles()
{
    setEnabled(false);
    m_dialog = makeDialog(QStringLiteral("frmWaveFile"), -1);
    if (!m_dialog)
        setEnabled(true);
}

// The one place where a property dialog is made and shown, by the name the
// module-type table gives (Index -1 for the two script-level dialogs). The
// module dialogs complete through FinishEdit, frmPropEnd, FrmScripts,
// FrmCommon and frmWaveFile only by enabling the window again; each dialog
// holds the window through a QPointer and the window holds it in m_dialog.
// This build has no dialog yet: nothing opens, and the caller enables the
// window again at once, as for a type without a dialog.
QDialog *frmScriptViewer::makeDialog(const QString &dialogName, qint16 Index)
{
    Q_UNUSED(dialogName);
    Q_UNUSED(Index);
    return nullptr;
}
