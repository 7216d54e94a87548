#include "frmpropend.h"
#include "ui_frmpropend.h"

#include "promptgroup.h"
#include "scripthost.h"

namespace ivr {

frmPropEnd::frmPropEnd(QWidget *parent)
    : PropertyDialog(parent)
    , ui(std::make_unique<Ui::frmPropEnd>())
{
    ui->setupUi(this);
    fixWindow();
    m_prompt = makePromptGroup(PromptGroup::controlsOf(ui.get()),
                               PromptGroup::Browse::ThroughFileBox);
    connectButtons(ui->cmdOk, ui->cmdCancel);
}

frmPropEnd::~frmPropEnd() = default;

void frmPropEnd::LoadFields()
{
    m_prompt->load(m_ModuleData->definition());
}

void frmPropEnd::CommitFields()
{
    // The module has no exits, yet its row is cleared like any other's.
    clearRow();
    m_prompt->commit(m_ModuleData->definition());
}

} // namespace ivr
