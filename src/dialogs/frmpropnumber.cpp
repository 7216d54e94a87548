#include "frmpropnumber.h"
#include "ui_frmpropnumber.h"

#include "moduleicon.h"
#include "msgbox.h"
#include "promptgroup.h"
#include "scripthost.h"

namespace ivr {

frmPropNumber::frmPropNumber(QWidget *parent)
    : PropertyDialog(parent)
    , ui(std::make_unique<Ui::frmPropNumber>())
{
    ui->setupUi(this);
    fixWindow();
    ui->Image1->setPixmap(ModuleIcon::picture(5, ui->Image1->size()));
    m_prompt = makePromptGroup(PromptGroup::controlsOf(ui.get()),
                               PromptGroup::Browse::ThroughFileBox);
    marksEdited(ui->cboSuccess);
    marksEdited(ui->cboTimeout);
    marksEdited(ui->chkPlayBeep, &QCheckBox::toggled);
    marksEdited(ui->txtModuleName, &QLineEdit::textChanged);
    for (SpinBox *spin : {ui->txtMaxDigits, ui->txtMinDigits, ui->txtTimeOut})
        marksEdited(spin, &QDoubleSpinBox::valueChanged);
    // txtPreDefBuffer marks nothing: a predefined number changed on its own
    // is not written at OK.
    connectButtons(ui->cmdOk, ui->cmdCancel);
}

frmPropNumber::~frmPropNumber() = default;

void frmPropNumber::Load()
{
    PropertyDialog::Load();
    ui->tabPages->setCurrentIndex(0);
}

void frmPropNumber::FillExitLists()
{
    fillExitCombos({{ui->cboSuccess, exitValue(QStringLiteral("OnSuccess")), &m_ExitSelection[0]},
                    {ui->cboTimeout, exitValue(QStringLiteral("OnTimeOut")), &m_ExitSelection[1]}});
}

void frmPropNumber::LoadFields()
{
    const Definition &d = m_ModuleData->definition();
    ui->txtModuleName->setText(m_ModuleData->Name());
    ui->cboSuccess->setCurrentIndex(m_ExitSelection[0]);
    ui->cboTimeout->setCurrentIndex(m_ExitSelection[1]);
    m_prompt->load(d);
    ui->txtPreDefBuffer->setText(d.PreDefBuffer());
    ui->chkPlayBeep->setChecked(d.PlayBeep());
    ui->txtTimeOut->setStoredValue(d.TimeOut());
    ui->txtMinDigits->setStoredValue(d.MinLength());
    ui->txtMaxDigits->setStoredValue(d.MaxLength());
}

bool frmPropNumber::ValidateFields()
{
    // A refused name hides the length check: one message at a time.
    bool ok = ValidateModuleName(*m_ModuleData, *m_ParentForm, ui->txtModuleName->text());
    if (ok && ui->txtMaxDigits->value() < ui->txtMinDigits->value()) {
        MsgBox::show(QStringLiteral("Minimum length of digit is greater then maximum length"),
                     QMessageBox::Critical);
        ok = false;
    }
    return ok;
}

void frmPropNumber::CommitFields()
{
    Definition &d = m_ModuleData->definition();
    clearRow();
    m_ModuleData->setName(ui->txtModuleName->text());
    commitExit(ui->cboSuccess, QStringLiteral("OnSuccess"));
    commitExit(ui->cboTimeout, QStringLiteral("OnTimeOut"));
    m_prompt->commit(d);
    d.setPlayBeep(ui->chkPlayBeep->isChecked());
    // Unlike every other text of the dialog, the number loses its blanks.
    d.setPreDefBuffer(ui->txtPreDefBuffer->text().trimmed());
    d.setTimeOut(ui->txtTimeOut->value());
    d.setMinLength(ui->txtMinDigits->value());
    d.setMaxLength(ui->txtMaxDigits->value());
}

} // namespace ivr
