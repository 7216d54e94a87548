#include "frmproprecord.h"
#include "ui_frmproprecord.h"

#include "moduleicon.h"
#include "promptgroup.h"
#include "scripthost.h"

namespace ivr {

frmPropRecord::frmPropRecord(QWidget *parent)
    : PropertyDialog(parent)
    , ui(std::make_unique<Ui::frmPropRecord>())
{
    ui->setupUi(this);
    setNameBox(ui->txtModuleName);
    fixWindow();
    ui->Image1->setPixmap(ModuleIcon::picture(7, ui->Image1->size()));
    m_prompt = makePromptGroup(PromptGroup::controlsOf(ui.get()),
                               PromptGroup::Browse::ThroughFileBox);
    marksEdited(ui->cboNext);
    marksEdited(ui->chkPlayBeep, &QCheckBox::toggled);
    marksEdited(ui->chkStopRecordOnDigit, &QCheckBox::toggled);
    marksEdited(ui->txtModuleName, &QLineEdit::textChanged);
    marksEdited(ui->txtRecordLen, &QDoubleSpinBox::valueChanged);
    connectButtons(ui->cmdOk, ui->cmdCancel);
}

frmPropRecord::~frmPropRecord() = default;

void frmPropRecord::FillExitLists()
{
    fillExitCombos({{ui->cboNext, exitValue(QStringLiteral("OnFinish")), &m_ExitSelection}});
}

void frmPropRecord::LoadFields()
{
    const Definition &d = m_ModuleData->definition();
    ui->cboNext->setCurrentIndex(m_ExitSelection);
    ui->txtModuleName->setText(m_ModuleData->Name());
    m_prompt->load(d);
    ui->txtRecordLen->setStoredValue(d.RecordLen());
    ui->chkPlayBeep->setChecked(d.PlayBeep());
    ui->chkStopRecordOnDigit->setChecked(d.StopOnDigit());
}

void frmPropRecord::CommitFields()
{
    Definition &d = m_ModuleData->definition();
    clearRow();
    m_ModuleData->setName(ui->txtModuleName->text());
    commitExit(ui->cboNext, QStringLiteral("OnFinish"));
    m_prompt->commit(d);
    d.setStopOnDigit(ui->chkStopRecordOnDigit->isChecked());
    d.setRecordLen(ui->txtRecordLen->value());
    d.setPlayBeep(ui->chkPlayBeep->isChecked());
}

} // namespace ivr
