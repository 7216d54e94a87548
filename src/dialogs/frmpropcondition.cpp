#include "frmpropcondition.h"
#include "ui_frmpropcondition.h"

#include "moduleicon.h"
#include "scripthost.h"

namespace ivr {

frmPropCondition::frmPropCondition(QWidget *parent)
    : PropertyDialog(parent)
    , ui(std::make_unique<Ui::frmPropCondition>())
{
    ui->setupUi(this);
    setNameBox(ui->txtModuleName);
    fixWindow();
    ui->Image1->setPixmap(ModuleIcon::picture(13, ui->Image1->size()));
    marksEdited(ui->txtModuleName, &QLineEdit::textChanged);
    marksEdited(ui->txtCondition, &QPlainTextEdit::textChanged);
    marksEdited(ui->cboSuccess);
    marksEdited(ui->cboFail);
    connectButtons(ui->cmdOk, ui->cmdCancel);
}

frmPropCondition::~frmPropCondition() = default;

void frmPropCondition::FillExitLists()
{
    fillExitCombos({{ui->cboSuccess, exitValue(QStringLiteral("OnSuccess")), &m_ExitSelection[0]},
                    {ui->cboFail, exitValue(QStringLiteral("OnFail")), &m_ExitSelection[1]}});
}

void frmPropCondition::LoadFields()
{
    ui->txtModuleName->setText(m_ModuleData->Name());
    ui->cboSuccess->setCurrentIndex(m_ExitSelection[0]);
    ui->cboFail->setCurrentIndex(m_ExitSelection[1]);
    ui->txtCondition->setPlainText(m_ModuleData->definition().Condition());
}

void frmPropCondition::CommitFields()
{
    // The name goes before the row is cleared here; the outcome is the same.
    m_ModuleData->setName(ui->txtModuleName->text());
    clearRow();
    commitExit(ui->cboSuccess, QStringLiteral("OnSuccess"));
    commitExit(ui->cboFail, QStringLiteral("OnFail"));
    m_ModuleData->definition().setCondition(ui->txtCondition->toPlainText());
}

} // namespace ivr
