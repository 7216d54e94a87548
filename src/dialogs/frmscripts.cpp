#include "frmscripts.h"
#include "ui_frmscripts.h"

#include "frmcommon.h"
#include "moduleicon.h"
#include "scripthost.h"

#include <QSignalBlocker>

namespace ivr {

FrmScripts::FrmScripts(QWidget *parent)
    : PropertyDialog(parent)
    , ui(std::make_unique<Ui::FrmScripts>())
{
    ui->setupUi(this);
    setNameBox(ui->txtModuleName);
    fixWindow();
    ui->Image1->setPixmap(ModuleIcon::picture(12, ui->Image1->size()));
    marksEdited(ui->txtModuleName, &QLineEdit::textChanged);
    marksEdited(ui->cboScripts);
    connect(ui->CmdAddNew, &QPushButton::clicked, this, &FrmScripts::CmdAddNew_Click);
    connectButtons(ui->cmdOk, ui->cmdCancel);
}

FrmScripts::~FrmScripts()
{
    // Ended with its window: the Associate Script opened from here goes too,
    // without a word back.
    if (m_mofrmCommon) {
        disconnect(m_mofrmCommon, nullptr, this, nullptr);
        m_mofrmCommon->unload();
    }
}

// Unlike the other dialogs, Edited is not cleared after the load: setting
// the name box has marked it, so OK always commits.
void FrmScripts::Load()
{
    setWindowTitle(m_ModuleData->Name());
    fillScripts();
    ui->txtModuleName->setText(m_ModuleData->Name());
    ui->cboScripts->setCurrentIndex(m_scriptSelection);
}

void FrmScripts::fillScripts()
{
    m_scriptSelection = -1;
    // Qt selects the first row added to an empty combo; the list comes
    // without a selection, as the caller decides.
    const QSignalBlocker blocker(ui->cboScripts);
    ui->cboScripts->clear();
    const ModuleDataPtr common = m_ParentForm ? m_ParentForm->CommonModule() : nullptr;
    if (common && common->definition().ScriptCount() > 0) {
        const QString own = m_ModuleData->definition().ScriptName();
        const qint16 n = common->definition().ScriptCount();
        for (int i = 1; i <= n; ++i) {
            const QString name = common->definition().ScriptName(i);
            ui->cboScripts->addItem(name);
            if (name == own)
                m_scriptSelection = ui->cboScripts->count() - 1; // the last match wins
        }
    }
    ui->cboScripts->setCurrentIndex(-1);
}

void FrmScripts::CmdAddNew_Click()
{
    const ModuleDataPtr common = m_ParentForm ? m_ParentForm->CommonModule() : nullptr;
    if (!common)
        return;
    m_mofrmCommon = new FrmCommon(parentWidget());
    setEnabled(false);
    connect(m_mofrmCommon, &PropertyDialog::CompleteEdit, this, [this](qint16, bool edited) {
        mofrmCommon_CompleteEdit(edited);
    });
    m_mofrmCommon->Popup(common, m_DrawLine, m_ParentForm, -1);
}

// The refilled list comes back with no selection, even where the module's
// script is still in it: the user chooses again.
void FrmScripts::mofrmCommon_CompleteEdit(bool edited)
{
    setEnabled(true);
    if (edited)
        fillScripts();
}

void FrmScripts::CommitFields()
{
    m_ModuleData->setName(ui->txtModuleName->text());
    m_ModuleData->definition().setScriptName(
            ui->cboScripts->currentIndex() >= 0 ? ui->cboScripts->currentText() : QString());
}

} // namespace ivr
