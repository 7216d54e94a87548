#include "frmpropconnect.h"
#include "ui_frmpropconnect.h"

#include "clsdrawline.h"
#include "scripthost.h"
#include "vorelmodule.h"

namespace ivr {

frmPropConnect::frmPropConnect(QWidget *parent)
    : PropertyDialog(parent)
    , ui(std::make_unique<Ui::frmPropConnect>())
{
    ui->setupUi(this);
    fixWindow();
    connectButtons(ui->cmdOk, ui->cmdCancel);
}

frmPropConnect::~frmPropConnect() = default;

void frmPropConnect::FillExitLists()
{
    fillExitCombos(
            {{ui->cboCurrModule, m_ModuleData->definition().NextModule(), &m_ExitSelection}});
    ui->cboCurrModule->setCurrentIndex(m_ExitSelection);
}

void frmPropConnect::cmdOk_Click()
{
    m_okPressed = true;
    const int chosen = ui->cboCurrModule->currentIndex();
    if (chosen != m_ExitSelection && hostAlive()) {
        setEdited(true);
        const int top = m_ParentForm->cmVorelModule().ubound();
        for (int k = 0; k <= top; ++k)
            m_DrawLine->setLineMatrix(m_Index, qint16(k), 0);
        if (chosen < 0) {
            m_ModuleData->definition().setNextModule(QString());
        } else {
            m_ModuleData->definition().setNextModule(
                    QLatin1Char('[') + ui->cboCurrModule->currentText() + QLatin1Char(']'));
            m_DrawLine->setLineMatrix(
                    m_Index, qint16(ui->cboCurrModule->itemData(chosen).toInt()), 1);
        }
    }
    unload();
}

} // namespace ivr
