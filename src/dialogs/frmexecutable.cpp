#include "frmexecutable.h"
#include "ui_frmexecutable.h"

#include "keptnamepicker.h"
#include "moduleicon.h"
#include "scripthost.h"

namespace ivr {

FrmExecutable::FrmExecutable(QWidget *parent)
    : PropertyDialog(parent)
    , ui(std::make_unique<Ui::FrmExecutable>())
{
    ui->setupUi(this);
    setNameBox(ui->txtModuleName);
    fixWindow();
    ui->Image1->setPixmap(ModuleIcon::picture(11, ui->Image1->size()));
    for (QLineEdit *box : {ui->txtModuleName, ui->TxtFileName, ui->txtArguments})
        marksEdited(box, &QLineEdit::textChanged);
    for (QComboBox *combo : {ui->cboRunMode, ui->cboSuccess, ui->cboFail})
        marksEdited(combo);
    connect(ui->cmdBrowse, &QPushButton::clicked, this, &FrmExecutable::cmdBrowse_Click);
    connectButtons(ui->cmdOk, ui->cmdCancel);
}

FrmExecutable::~FrmExecutable() = default;

void FrmExecutable::Load()
{
    // The title is set before the lists as well as after the fields.
    setWindowTitle(m_ModuleData->Name());
    PropertyDialog::Load();
}

void FrmExecutable::FillExitLists()
{
    m_ExitSelection[0] = m_ExitSelection[1] = -1;
    // The run modes come whatever the script holds, even with no module to
    // offer; the row is the value.
    ui->cboRunMode->addItem(QStringLiteral("0-Silent"), 0);
    ui->cboRunMode->addItem(QStringLiteral("1-Normal"), 1);
    ui->cboRunMode->setCurrentIndex(0);
    fillExitCombos({{ui->cboSuccess, exitValue(QStringLiteral("OnSuccess")), &m_ExitSelection[0]},
                    {ui->cboFail, exitValue(QStringLiteral("OnFail")), &m_ExitSelection[1]}});
}

void FrmExecutable::LoadFields()
{
    const Definition &d = m_ModuleData->definition();
    ui->txtModuleName->setText(m_ModuleData->Name());
    ui->cboSuccess->setCurrentIndex(m_ExitSelection[0]);
    ui->cboFail->setCurrentIndex(m_ExitSelection[1]);
    ui->TxtFileName->setText(d.FileName());
    ui->txtArguments->setText(d.CommandLine());
    // A stored mode without a row opens with no selection.
    const qint32 mode = d.RunMode();
    ui->cboRunMode->setCurrentIndex(mode >= 0 && mode < ui->cboRunMode->count() ? mode : -1);
}

void FrmExecutable::CommitFields()
{
    Definition &d = m_ModuleData->definition();
    clearRow();
    m_ModuleData->setName(ui->txtModuleName->text());
    commitExit(ui->cboSuccess, QStringLiteral("OnSuccess"));
    commitExit(ui->cboFail, QStringLiteral("OnFail"));
    d.setCommandLine(ui->txtArguments->text());
    d.setFileName(ui->TxtFileName->text());
    d.setRunMode(qMax(0, ui->cboRunMode->currentIndex()));
}

void FrmExecutable::cmdBrowse_Click()
{
    if (!hostAlive())
        return;
    const std::optional<QString> picked = pickKeepingLastName(
            m_ParentForm->commonDialog(), QStringLiteral("Application (*.exe)|*.exe"), this);
    if (picked)
        ui->TxtFileName->setText(*picked);
}

} // namespace ivr
