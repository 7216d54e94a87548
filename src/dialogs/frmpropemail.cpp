#include "frmpropemail.h"
#include "ui_frmpropemail.h"

#include "keptnamepicker.h"
#include "moduleicon.h"
#include "scripthost.h"

namespace ivr {

frmPropEMail::frmPropEMail(QWidget *parent)
    : PropertyDialog(parent)
    , ui(std::make_unique<Ui::frmPropEMail>())
{
    ui->setupUi(this);
    setNameBox(ui->txtModuleName);
    fixWindow();
    ui->Image1->setPixmap(ModuleIcon::picture(9, ui->Image1->size()));
    for (QLineEdit *box :
         {ui->txtModuleName, ui->txtTo, ui->txtFrom, ui->txtSubject, ui->txtAttachment})
        marksEdited(box, &QLineEdit::textChanged);
    marksEdited(ui->txtMessage, &QPlainTextEdit::textChanged);
    marksEdited(ui->cboSuccess);
    marksEdited(ui->cboFail);
    connect(ui->cmdBrowse, &QPushButton::clicked, this, &frmPropEMail::cmdBrowse_Click);
    connectButtons(ui->cmdOk, ui->cmdCancel);
}

frmPropEMail::~frmPropEMail() = default;

void frmPropEMail::FillExitLists()
{
    fillExitCombos({{ui->cboSuccess, exitValue(QStringLiteral("OnSuccess")), &m_ExitSelection[0]},
                    {ui->cboFail, exitValue(QStringLiteral("OnFail")), &m_ExitSelection[1]}});
}

void frmPropEMail::LoadFields()
{
    const Definition &d = m_ModuleData->definition();
    ui->txtModuleName->setText(m_ModuleData->Name());
    ui->cboSuccess->setCurrentIndex(m_ExitSelection[0]);
    ui->cboFail->setCurrentIndex(m_ExitSelection[1]);
    // "From" stands above "To" on the screen; the fields go with SendTo first.
    ui->txtTo->setText(d.SendTo());
    ui->txtFrom->setText(d.MailFrom());
    ui->txtSubject->setText(d.Subject());
    ui->txtAttachment->setText(d.Attachment());
    ui->txtMessage->setPlainText(d.Message());
}

void frmPropEMail::CommitFields()
{
    Definition &d = m_ModuleData->definition();
    m_ModuleData->setName(ui->txtModuleName->text());
    clearRow();
    commitExit(ui->cboSuccess, QStringLiteral("OnSuccess"));
    commitExit(ui->cboFail, QStringLiteral("OnFail"));
    d.setSendTo(ui->txtTo->text());
    d.setMailFrom(ui->txtFrom->text());
    d.setSubject(ui->txtSubject->text());
    d.setAttachment(ui->txtAttachment->text());
    d.setMessage(ui->txtMessage->toPlainText());
}

void frmPropEMail::cmdBrowse_Click()
{
    if (!hostAlive())
        return;
    const std::optional<QString> picked = pickKeepingLastName(
            m_ParentForm->commonDialog(), QStringLiteral("All Files (*.*)|*.*"), this);
    if (picked)
        ui->txtAttachment->setText(*picked);
}

} // namespace ivr
