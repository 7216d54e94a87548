// The script window's side of the property dialogs: which dialog a module
// gets, what the window notes before it opens and how it turns the marks
// the dialog left in the link matrix into arrows.

#include "frmscriptviewer.h"

#include "dialogtable.h"
#include "frameservices.h"
#include "ivrerror.h"
#include "moduletypes.h"
#include "propertydialog.h"
#include "screenpointer.h"
#include "scriptcanvas.h"
#include "voreldirection.h"
#include "vorelmodule.h"

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
    // While a dialog is open the window takes no second one.
    if (!m_cmVorelModule.exists(Index) || dialogOpen())
        return;
    VorelModule *module = m_cmVorelModule.at(Index);
    const ModuleDataPtr data = module->moduleData();
    if (!data)
        return;
    setEnabled(false);
    ScreenPointer::set(ScreenPointer::Hourglass);
    const int top = m_cmVorelModule.ubound();
    m_OldArrows.fill(0, top + 1);
    for (int j = 0; j <= top; ++j)
        m_OldArrows[j] = m_DrawLine.LineMatrix(Index, qint16(j));
    m_OldName = data->Name();
    popupDialog(ModuleTypes::info(data->ModuleType()).dialogName, data, Index);
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
        for (int j = 0; j < m_OldArrows.size(); ++j) {
            if (m_DrawLine.LineMatrix(Index, qint16(j)) > 0) {
                const qint16 k = NextFreeArrow();
                m_VorelDirection1.load(k);
                m_DrawLine.setLineMatrix(Index, qint16(j), k);
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
    if (dialogOpen())
        return;
    setEnabled(false);
    popupDialog(QStringLiteral("FrmCommon"), m_CommonModule, -1);
}

void frmScriptViewer::editWaveFiles()
{
    if (dialogOpen())
        return;
    setEnabled(false);
    popupDialog(QStringLiteral("frmWaveFile"), m_CommonModule, -1);
}

// The one place where a property dialog is made and shown, by the name the
// module-type table gives. The dialog belongs to the main window: a child of
// this window would be disabled with it.
void frmScriptViewer::popupDialog(const QString &dialogName, ModuleDataPtr module, qint16 Index)
{
    const DialogEntry *entry = DialogTable::find(dialogName);
    if (!entry) {
        setEnabled(true);
        return;
    }
    QWidget *owner = appMain() ? appMain()->frameWidget() : nullptr;
    PropertyDialog *dialog = entry->make(owner);
    m_dialogs[dialogName] = dialog;
    const Completion completion = entry->completion;
    connect(dialog, &PropertyDialog::CompleteEdit, this, [this, completion](qint16 i, bool edited) {
        if (completion == Completion::FinishEdit)
            FinishEdit(i, edited);
        else
            setEnabled(true);
    });
    dialog->Popup(std::move(module), &m_DrawLine, this, Index);
}

PropertyDialog *frmScriptViewer::openDialog(const QString &dialogName) const
{
    const auto it = m_dialogs.find(dialogName);
    return it == m_dialogs.end() ? nullptr : it->second.data();
}

bool frmScriptViewer::dialogOpen() const
{
    for (const auto &[name, dialog] : m_dialogs) {
        if (dialog && dialog->isVisible())
            return true;
    }
    return false;
}

// The window goes: its dialogs end without a word back to it, so that nothing
// of a window on its way out is touched and Changed stays as the close found it.
void frmScriptViewer::unloadDialogs()
{
    for (auto &[name, dialog] : m_dialogs) {
        if (!dialog)
            continue;
        disconnect(dialog, nullptr, this, nullptr);
        dialog->unload();
    }
    m_dialogs.clear();
}
