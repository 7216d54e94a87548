#include "frmwavefile.h"
#include "ui_frmwavefile.h"

#include "audition.h"
#include "commondialog.h"
#include "ivrerror.h"
#include "scripthost.h"

#include <QMouseEvent>

namespace ivr {

frmWaveFile::frmWaveFile(QWidget *parent)
    : PropertyDialog(parent)
    , ui(std::make_unique<Ui::frmWaveFile>())
{
    ui->setupUi(this);
    fixWindow();
    setModal(true);

    connect(ui->cboNumber, &QComboBox::currentIndexChanged, this, [this](int i) {
        if (i >= 0)
            ui->txtWaveFile->setText(m_numbers[size_t(i)]);
    });
    connect(ui->cboMonth, &QComboBox::currentIndexChanged, this, [this](int i) {
        if (i >= 0)
            ui->txtMonthFile->setText(m_months[size_t(i)]);
    });
    // A number's box is taken into its slot at every change; a month's box
    // only when it is clicked (eventFilter).
    connect(ui->txtWaveFile, &QLineEdit::textChanged, this, [this](const QString &text) {
        const int i = ui->cboNumber->currentIndex();
        if (i >= 0)
            m_numbers[size_t(i)] = text;
    });
    ui->txtMonthFile->installEventFilter(this);

    connect(ui->cmdBrowse, &QPushButton::clicked, this, [this] {
        browse(ui->txtWaveFile, Picker::Fresh);
    });
    connect(ui->cmdBrowseMonth, &QPushButton::clicked, this, [this] {
        browse(ui->txtMonthFile, Picker::Fresh);
    });
    connect(ui->cmdBrowseBeep, &QPushButton::clicked, this, [this] {
        browse(ui->txtBeepFile, Picker::AsItStands);
    });
    connect(ui->cmdPlayNumber, &QPushButton::clicked, this, [this] {
        PlayWaveFile(ui->txtWaveFile->text().trimmed());
    });
    connect(ui->cmdPlayMonth, &QPushButton::clicked, this, [this] {
        PlayWaveFile(ui->txtMonthFile->text().trimmed());
    });
    connectButtons(ui->cmdOk, ui->cmdCancel);
}

frmWaveFile::~frmWaveFile() = default;

QStringList frmWaveFile::numberSlots()
{
    QStringList texts;
    for (int i = 0; i <= 20; ++i)
        texts << QStringLiteral("Number %1").arg(i);
    for (int tens = 30; tens <= 90; tens += 10)
        texts << QStringLiteral("Number %1").arg(tens);
    texts << QStringLiteral("Hundred") << QStringLiteral("Thousand") << QStringLiteral("Million")
          << QStringLiteral("Billion");
    return texts;
}

void frmWaveFile::Load()
{
    // Filled without a selection, so both slot boxes open empty.
    {
        const QSignalBlocker month(ui->cboMonth);
        const QSignalBlocker number(ui->cboNumber);
        for (int i = 1; i <= Definition::MonthFileSlots; ++i)
            ui->cboMonth->addItem(QStringLiteral("Month %1").arg(i));
        ui->cboNumber->addItems(numberSlots());
        ui->cboMonth->setCurrentIndex(-1);
        ui->cboNumber->setCurrentIndex(-1);
    }
    const Definition &d = m_ModuleData->definition();
    for (int i = 0; i < Definition::MonthFileSlots; ++i)
        m_months[size_t(i)] = d.MonthFile(i);
    for (int i = 0; i < Definition::FileNameSlots; ++i)
        m_numbers[size_t(i)] = d.FileName(i);
    ui->txtBeepFile->setText(d.BeepFileName());
    setEdited(false);
    setWindowTitle(QStringLiteral("Select Wave Files"));
}

bool frmWaveFile::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == ui->txtMonthFile && event->type() == QEvent::MouseButtonPress) {
        const int i = ui->cboMonth->currentIndex();
        if (i >= 0)
            m_months[size_t(i)] = ui->txtMonthFile->text();
    }
    return PropertyDialog::eventFilter(watched, event);
}

// The shared picker; a cancel hands back whatever name it holds, and that
// lands in the box all the same.
void frmWaveFile::browse(QLineEdit *target, Picker picker)
{
    try {
        CommonDialog &dialog = m_ParentForm->commonDialog();
        dialog.Flags = CommonDialog::Explorer | CommonDialog::FileMustExist;
        dialog.Filter = QStringLiteral("Wav Files (*.wav)|*.wav");
        dialog.FilterIndex = 1;
        if (picker == Picker::Fresh) {
            dialog.DialogTitle = QStringLiteral("Select Wav File");
            dialog.FileName.clear();
        }
        dialog.ShowOpen(this);
        target->setText(dialog.FileName);
        markEdited();
    } catch (const IvrError &) {
    }
}

void frmWaveFile::CommitFields()
{
    Definition &d = m_ModuleData->definition();
    for (int i = 0; i < Definition::MonthFileSlots; ++i)
        d.setMonthFile(i, m_months[size_t(i)]);
    for (int i = 0; i < Definition::FileNameSlots; ++i)
        d.setFileName(i, m_numbers[size_t(i)]);
    d.setBeepFileName(ui->txtBeepFile->text().trimmed());
}

} // namespace ivr
