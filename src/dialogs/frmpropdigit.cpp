#include "frmpropdigit.h"
#include "ui_frmpropdigit.h"

#include "exittables.h"
#include "moduleicon.h"
#include "promptgroup.h"
#include "scripthost.h"

namespace ivr {

namespace {

// cboFlow(row) and the exit it writes, in the order the commit writes them:
// the ten digits, then star, hash and the time-out, as the module type's
// exits stand in the one exit table.
const QStringList &flowKeys()
{
    static const QStringList keys = ExitTables::keys(4, ExitWalk::DialogWrites);
    return keys;
}

} // namespace

frmPropDigit::frmPropDigit(QWidget *parent)
    : PropertyDialog(parent)
    , ui(std::make_unique<Ui::frmPropDigit>())
{
    ui->setupUi(this);
    setNameBox(ui->txtModuleName);
    fixWindow();
    ui->Image1->setPixmap(ModuleIcon::picture(4, ui->Image1->size()));
    m_prompt = makePromptGroup(PromptGroup::controlsOf(ui.get()),
                               PromptGroup::Browse::ThroughFileBox);
    for (int row = 0; row < FlowRows; ++row) {
        m_cboFlow[row] = findChild<QComboBox *>(QStringLiteral("cboFlow_%1").arg(row));
        marksEdited(m_cboFlow[row]);
    }
    marksEdited(ui->chkPlayBeep, &QCheckBox::toggled);
    marksEdited(ui->txtModuleName, &QLineEdit::textChanged);
    marksEdited(ui->txtTimeOut, &QDoubleSpinBox::valueChanged);
    connectButtons(ui->cmdOk, ui->cmdCancel);
}

frmPropDigit::~frmPropDigit() = default;

QString frmPropDigit::flowKey(int row)
{
    return flowKeys().at(row);
}

void frmPropDigit::Load()
{
    PropertyDialog::Load();
    // Whatever page was last looked at, the dialog opens on "Play".
    ui->tabPages->setCurrentIndex(0);
}

void frmPropDigit::FillExitLists()
{
    const Definition &d = m_ModuleData->definition();
    QList<ExitCombo> combos;
    for (int row = 0; row < FlowRows; ++row)
        combos.append({m_cboFlow[row],
                       d.Properties(flowKey(row)).Value().toString(),
                       &m_ExitSelection[row]});
    fillExitCombos(combos);
}

void frmPropDigit::LoadFields()
{
    const Definition &d = m_ModuleData->definition();
    ui->txtModuleName->setText(m_ModuleData->Name());
    for (int row = 0; row < FlowRows; ++row)
        m_cboFlow[row]->setCurrentIndex(m_ExitSelection[row]);
    m_prompt->load(d);
    ui->chkPlayBeep->setChecked(d.PlayBeep());
    ui->txtTimeOut->setStoredValue(d.TimeOut());
}

void frmPropDigit::CommitFields()
{
    Definition &d = m_ModuleData->definition();
    // This dialog names the module before it clears the row; the outcome is
    // the same as the other way round.
    m_ModuleData->setName(ui->txtModuleName->text());
    clearRow();
    for (int row = 0; row < FlowRows; ++row)
        commitExit(m_cboFlow[row], flowKey(row));
    m_prompt->commit(d);
    d.setPlayBeep(ui->chkPlayBeep->isChecked());
    d.setTimeOut(ui->txtTimeOut->value());
}

} // namespace ivr
