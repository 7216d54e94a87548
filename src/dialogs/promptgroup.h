#pragma once

#include <QObject>

#include <functional>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;

namespace ivr {

class CommonDialog;
class Definition;

// The prompt of a module (spoken text or wave file) as six dialogs show it:
// the two options, the file box with its browse button, the text box and the
// Play button. Both texts are kept and committed whichever option stands.
class PromptGroup : public QObject
{
    Q_OBJECT

public:
    struct Controls
    {
        QRadioButton *optTTS0;
        QRadioButton *optTTS1;
        QLabel *lblWaveFile;
        QLineEdit *txtWaveFile;
        QPushButton *cmdBrowse;
        QLabel *lblTTS;
        QPlainTextEdit *txtTTS;
        QPushButton *cmdPlay;
    };
    // Whether the browse button marks the dialog itself, or only the change
    // of the file box that it brings does.
    enum class Browse { ThroughFileBox, MarksEdited };

    // The group's controls of a dialog's generated form, which names them alike.
    template<typename Form>
    static Controls controlsOf(Form *ui)
    {
        return {ui->optTTS_0,
                ui->optTTS_1,
                ui->lblWaveFile,
                ui->txtWaveFile,
                ui->cmdBrowse,
                ui->lblTTS,
                ui->txtTTS,
                ui->cmdPlay};
    }

    PromptGroup(const Controls &controls,
                std::function<void()> markEdited,
                std::function<CommonDialog &()> picker,
                Browse browse,
                QObject *parent);

    void load(const Definition &definition);
    void commit(Definition &definition) const;

private:
    void optTTS_Click();
    void cmdBrowse_Click();
    void cmdPlay_Click();

    Controls m_c;
    std::function<void()> m_markEdited;
    std::function<CommonDialog &()> m_picker;
    Browse m_browse;
};

} // namespace ivr
