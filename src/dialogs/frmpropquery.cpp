#include "frmpropquery.h"
#include "ui_frmpropquery.h"

#include "connectionstringdialog.h"
#include "moduleicon.h"
#include "scripthost.h"

namespace ivr {

frmPropQuery::frmPropQuery(QWidget *parent)
    : PropertyDialog(parent)
    , ui(std::make_unique<Ui::frmPropQuery>())
{
    ui->setupUi(this);
    setNameBox(ui->txtModuleName);
    fixWindow();
    ui->Image1->setPixmap(ModuleIcon::picture(8, ui->Image1->size()));
    marksEdited(ui->txtModuleName, &QLineEdit::textChanged);
    marksEdited(ui->txtConString, &QLineEdit::textChanged);
    marksEdited(ui->txtQuery, &QPlainTextEdit::textChanged);
    for (QComboBox *combo : {ui->cboSuccess, ui->cboFail, ui->cboNoRecord})
        marksEdited(combo);
    connect(ui->cmdBrowse, &QPushButton::clicked, this, &frmPropQuery::cmdBrowse_Click);
    connectButtons(ui->cmdOk, ui->cmdCancel);
}

frmPropQuery::~frmPropQuery() = default;

void frmPropQuery::FillExitLists()
{
    const Definition &d = m_ModuleData->definition();
    const auto stored = [&d](const char *key) {
        return d.Properties(QLatin1String(key)).Value().toString();
    };
    fillExitCombos({{ui->cboSuccess, stored("OnSuccess"), &m_ExitSelection[0]},
                    {ui->cboFail, stored("OnFail"), &m_ExitSelection[1]},
                    {ui->cboNoRecord, stored("OnNoRecord"), &m_ExitSelection[2]}});
}

void frmPropQuery::LoadFields()
{
    const Definition &d = m_ModuleData->definition();
    ui->txtModuleName->setText(m_ModuleData->Name());
    ui->cboSuccess->setCurrentIndex(m_ExitSelection[0]);
    ui->cboFail->setCurrentIndex(m_ExitSelection[1]);
    ui->cboNoRecord->setCurrentIndex(m_ExitSelection[2]);
    ui->txtQuery->setPlainText(d.QueryString());
    ui->txtConString->setText(d.ConnectionString());
}

void frmPropQuery::CommitFields()
{
    Definition &d = m_ModuleData->definition();
    clearRow();
    m_ModuleData->setName(ui->txtModuleName->text());
    commitExit(ui->cboSuccess, QStringLiteral("OnSuccess"));
    commitExit(ui->cboFail, QStringLiteral("OnFail"));
    commitExit(ui->cboNoRecord, QStringLiteral("OnNoRecord"));
    d.setConnectionString(ui->txtConString->text());
    d.setQueryString(ui->txtQuery->toPlainText());
}

void frmPropQuery::cmdBrowse_Click()
{
    // Always a new string: what stands in the box is not handed over, and a
    // confirmed string replaces it whole.
    if (const std::optional<QString> made = ConnectionStringDialog::PromptNew(this))
        ui->txtConString->setText(*made);
}

} // namespace ivr
