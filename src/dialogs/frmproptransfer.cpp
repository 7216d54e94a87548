#include "frmproptransfer.h"
#include "ui_frmproptransfer.h"

#include "moduleicon.h"
#include "promptgroup.h"
#include "scripthost.h"

namespace ivr {

frmPropTransfer::frmPropTransfer(QWidget *parent)
    : PropertyDialog(parent)
    , ui(std::make_unique<Ui::frmPropTransfer>())
{
    ui->setupUi(this);
    setNameBox(ui->txtModuleName);
    fixWindow();
    ui->Image1->setPixmap(ModuleIcon::picture(6, ui->Image1->size()));
    // Browsing marks the dialog itself, so a cancelled choice over an empty
    // box counts as an edit too.
    m_prompt = makePromptGroup(PromptGroup::controlsOf(ui.get()), PromptGroup::Browse::MarksEdited);
    marksEdited(ui->txtModuleName, &QLineEdit::textChanged);
    // txtExtNo marks nothing: a new number typed on its own is not written.
    connectButtons(ui->cmdOk, ui->cmdCancel);
}

frmPropTransfer::~frmPropTransfer() = default;

void frmPropTransfer::LoadFields()
{
    const Definition &d = m_ModuleData->definition();
    ui->txtModuleName->setText(m_ModuleData->Name());
    ui->txtExtNo->setText(d.DefaultExt());
    m_prompt->load(d);
}

void frmPropTransfer::CommitFields()
{
    Definition &d = m_ModuleData->definition();
    clearRow();
    m_ModuleData->setName(ui->txtModuleName->text());
    d.setDefaultExt(ui->txtExtNo->text());
    m_prompt->commit(d);
}

} // namespace ivr
