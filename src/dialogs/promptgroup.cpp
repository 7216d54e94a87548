#include "promptgroup.h"

#include "audition.h"
#include "commondialog.h"
#include "definition.h"
#include "ivrerror.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>

namespace ivr {

PromptGroup::PromptGroup(const Controls &controls,
                         std::function<void()> markEdited,
                         std::function<CommonDialog &()> picker,
                         Browse browse,
                         QObject *parent)
    : QObject(parent)
    , m_c(controls)
    , m_markEdited(std::move(markEdited))
    , m_picker(std::move(picker))
    , m_browse(browse)
{
    // An option that becomes selected, by the user or by the load, is a click.
    for (QRadioButton *option : {m_c.optTTS0, m_c.optTTS1}) {
        connect(option, &QRadioButton::toggled, this, [this](bool on) {
            if (on)
                optTTS_Click();
        });
    }
    connect(m_c.txtTTS, &QPlainTextEdit::textChanged, this, [this] { m_markEdited(); });
    connect(m_c.txtWaveFile, &QLineEdit::textChanged, this, [this] { m_markEdited(); });
    connect(m_c.cmdBrowse, &QPushButton::clicked, this, &PromptGroup::cmdBrowse_Click);
    connect(m_c.cmdPlay, &QPushButton::clicked, this, &PromptGroup::cmdPlay_Click);
}

void PromptGroup::load(const Definition &definition)
{
    const bool spoken = definition.isTextMsg();
    m_c.optTTS0->setChecked(spoken);
    m_c.optTTS1->setChecked(!spoken);
    optTTS_Click();
    m_c.txtTTS->setPlainText(definition.TextToPlay());
    m_c.txtWaveFile->setText(definition.FileName());
}

void PromptGroup::commit(Definition &definition) const
{
    definition.setisTextMsg(m_c.optTTS0->isChecked());
    definition.setTextToPlay(m_c.txtTTS->toPlainText());
    definition.setFileName(m_c.txtWaveFile->text());
}

void PromptGroup::optTTS_Click()
{
    m_markEdited();
    const bool wave = m_c.optTTS1->isChecked();
    const bool spoken = m_c.optTTS0->isChecked();
    m_c.lblWaveFile->setEnabled(wave);
    m_c.cmdBrowse->setEnabled(wave);
    m_c.txtWaveFile->setEnabled(wave);
    m_c.lblTTS->setEnabled(spoken);
    m_c.txtTTS->setEnabled(spoken);
}

void PromptGroup::cmdBrowse_Click()
{
    try {
        CommonDialog &picker = m_picker();
        picker.Flags = CommonDialog::Explorer | CommonDialog::FileMustExist;
        picker.Filter = QStringLiteral("Wav Files (*.wav)|*.wav");
        picker.DialogTitle = QStringLiteral("Select Wav File");
        picker.FileName.clear();
        picker.FilterIndex = 1;
        picker.ShowOpen(m_c.cmdBrowse->window());
        // A cancel leaves the name empty, which clears the box.
        m_c.txtWaveFile->setText(picker.FileName);
        if (m_browse == Browse::MarksEdited)
            m_markEdited();
    } catch (const IvrError &) {
    }
}

void PromptGroup::cmdPlay_Click()
{
    if (m_c.optTTS0->isChecked())
        SpeakText(m_c.txtTTS->toPlainText());
    else
        PlayWaveFile(m_c.txtWaveFile->text().trimmed());
}

} // namespace ivr
