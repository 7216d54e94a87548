#include "frmpropplay.h"
#include "ui_frmpropplay.h"

#include "moduleicon.h"
#include "promptgroup.h"
#include "scripthost.h"

namespace ivr {

frmPropPlay::frmPropPlay(QWidget *parent)
    : PropertyDialog(parent)
    , ui(std::make_unique<Ui::frmPropPlay>())
{
    ui->setupUi(this);
    setNameBox(ui->txtModuleName);
    fixWindow();
    ui->Image1->setPixmap(ModuleIcon::picture(3, ui->Image1->size()));
    m_prompt = makePromptGroup(PromptGroup::controlsOf(ui.get()),
                               PromptGroup::Browse::ThroughFileBox);
    marksEdited(ui->cboNext);
    marksEdited(ui->txtModuleName, &QLineEdit::textChanged);
    marksEdited(ui->txtReplayCount, &QDoubleSpinBox::valueChanged);
    marksEdited(ui->txtPauseBetn, &QDoubleSpinBox::valueChanged);
    connectButtons(ui->cmdOk, ui->cmdCancel);
}

frmPropPlay::~frmPropPlay() = default;

void frmPropPlay::FillExitLists()
{
    fillExitCombos({{ui->cboNext, exitValue(QStringLiteral("NextModule")), &m_ExitSelection}});
}

void frmPropPlay::LoadFields()
{
    const Definition &d = m_ModuleData->definition();
    ui->cboNext->setCurrentIndex(m_ExitSelection);
    ui->txtModuleName->setText(m_ModuleData->Name());
    m_prompt->load(d);
    ui->txtReplayCount->setStoredValue(d.ReplayCount());
    ui->txtPauseBetn->setStoredValue(d.PauseBetn());
}

void frmPropPlay::CommitFields()
{
    Definition &d = m_ModuleData->definition();
    clearRow();
    m_ModuleData->setName(ui->txtModuleName->text());
    commitExit(ui->cboNext, QStringLiteral("NextModule"));
    m_prompt->commit(d);
    d.setReplayCount(ui->txtReplayCount->value());
    d.setPauseBetn(ui->txtPauseBetn->value());
}

} // namespace ivr
