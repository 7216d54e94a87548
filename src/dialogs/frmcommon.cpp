#include "frmcommon.h"
#include "ui_frmcommon.h"

#include "frmwavefile.h"
#include "ivrerror.h"
#include "msgbox.h"
#include "scriptutility.h"

#include <QPointer>

namespace ivr {

FrmCommon::FrmCommon(QWidget *parent)
    : PropertyDialog(parent)
    , ui(std::make_unique<Ui::FrmCommon>())
{
    ui->setupUi(this);
    fixWindow();
    connect(ui->cmdBrowse, &QPushButton::clicked, this, &FrmCommon::cmdBrowse_Click);
    connect(ui->CmdAddScript, &QPushButton::clicked, this, &FrmCommon::CmdAddScript_Click);
    connect(ui->cmdDelete, &QPushButton::clicked, this, &FrmCommon::cmdDelete_Click);
    connect(ui->cmdWaveFiles, &QPushButton::clicked, this, &FrmCommon::cmdWaveFiles_Click);
    connectButtons(ui->cmdOk, ui->cmdCancel);
}

FrmCommon::~FrmCommon() = default;

void FrmCommon::Load()
{
    setWindowTitle(QStringLiteral("Associate Script"));
    const Definition &d = m_ModuleData->definition();
    if (d.ScriptCount() > 0) {
        const qint16 n = d.ScriptCount();
        for (int i = 1; i <= n; ++i)
            ui->LstScripts->addItem(d.ScriptName(i));
    }
    setEdited(false);
}

void FrmCommon::cmdBrowse_Click()
{
    try {
        const QString extension = ScriptUtility::ScriptExtension();
        m_dlgCommonDialog.DialogTitle = QStringLiteral("Open Brindlewave IVR Script ");
        m_dlgCommonDialog.CancelError = false;
        m_dlgCommonDialog.Filter
                = QStringLiteral("Brindlewave IVR Script (*.%1) |*.%1").arg(extension);
        m_dlgCommonDialog.Flags = CommonDialog::Explorer | CommonDialog::FileMustExist;
        m_dlgCommonDialog.ShowOpen(this);
        // The name is not cleared before showing, so a cancel after an
        // earlier pick brings that pick back.
        if (!m_dlgCommonDialog.FileName.isEmpty()) {
            m_browsedFile = m_dlgCommonDialog.FileName;
            ui->TxtScriptName->setText(m_browsedFile);
        }
    } catch (const IvrError &) {
    }
}

void FrmCommon::CmdAddScript_Click()
{
    // Until a file has been picked nothing is added; after that the box is
    // added as it stands, empty or typed over.
    if (m_browsedFile.trimmed().isEmpty())
        return;
    ui->LstScripts->addItem(ui->TxtScriptName->text());
    ui->TxtScriptName->clear();
    markEdited();
}

void FrmCommon::cmdDelete_Click()
{
    QListWidgetItem *item = ui->LstScripts->currentItem();
    if (!item || !item->isSelected()) {
        MsgBox::show(QStringLiteral("Select script"));
        return;
    }
    delete ui->LstScripts->takeItem(ui->LstScripts->row(item));
    // Qt would select the next row; the list is left with none.
    ui->LstScripts->setCurrentRow(-1);
    ui->LstScripts->clearSelection();
    markEdited();
}

// The button stays hidden; the wave table is reached from the script's menu.
void FrmCommon::cmdWaveFiles_Click()
{
    QPointer<FrmCommon> self(this);
    bool waveEdited = false;
    auto *waveFiles = new frmWaveFile(parentWidget());
    const QMetaObject::Connection heard = connect(
            waveFiles, &PropertyDialog::CompleteEdit, this, [&waveEdited](qint16, bool edited) {
                waveEdited = edited;
            });
    waveFiles->Popup(m_ModuleData, m_DrawLine, m_ParentForm, -1);
    disconnect(heard);
    // What the wave table reports replaces this dialog's own flag.
    if (self)
        setEdited(waveEdited);
}

void FrmCommon::CommitFields()
{
    // The list is emptied by name, reading the count once; the library
    // keeps the numbering until the walk is over, equal names included.
    if (m_ModuleData->definition().ScriptCount() > 0) {
        const qint16 n = m_ModuleData->definition().ScriptCount();
        for (int i = 1; i <= n; ++i)
            m_ModuleData->definition().RemoveScript(m_ModuleData->definition().ScriptName(i));
    }
    for (int row = 0; row < ui->LstScripts->count(); ++row)
        m_ModuleData->definition().AddScript(ui->LstScripts->item(row)->text());
}

} // namespace ivr
