#include "propertydialog.h"

#include "audition.h"
#include "clsdrawline.h"
#include "frameservices.h"
#include "ivrerror.h"
#include "msgbox.h"
#include "scriptconstants.h"
#include "scripthost.h"
#include "vorelmodule.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QEventLoop>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>

namespace ivr {

namespace {

constexpr int ConnectedType = 1;

// A module as the dialogs read it: a hole, or a control that never got its
// data, fails here the same way.
VorelModule *moduleAt(ScriptHost &form, int i)
{
    VorelModule *module = form.cmVorelModule().at(qint16(i));
    if (!module->moduleData())
        throw IvrError(QStringLiteral("Control array element '%1' has no module").arg(i));
    return module;
}

} // namespace

PropertyDialog::PropertyDialog(QWidget *parent)
    : QDialog(parent,
              Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint
                      | Qt::MSWindowsFixedSizeDialogHint)
{
    setAttribute(Qt::WA_DeleteOnClose, false);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(8.25);
    setFont(font);
    auto *help = new QShortcut(QKeySequence::HelpContents, this);
    connect(help, &QShortcut::activated, this, [this] {
        if (FrameServices *frame = appMain())
            frame->showHelpContext(helpContext());
    });
}

PropertyDialog::~PropertyDialog()
{
    // The program's end: whoever still listens hears the completion once.
    complete();
}

void PropertyDialog::fixWindow()
{
    setFixedSize(size());
}

PromptGroup *PropertyDialog::makePromptGroup(const PromptGroup::Controls &controls,
                                             PromptGroup::Browse browse)
{
    return new PromptGroup(
            controls,
            [this] { markEdited(); },
            [this]() -> CommonDialog & { return m_ParentForm->commonDialog(); },
            browse,
            this);
}

void PropertyDialog::connectButtons(QPushButton *ok, QPushButton *cancel)
{
    for (QPushButton *button : findChildren<QPushButton *>()) {
        button->setAutoDefault(false);
        button->setDefault(false);
    }
    connect(ok, &QPushButton::clicked, this, [this] { cmdOk_Click(); });
    connect(cancel, &QPushButton::clicked, this, [this] { cmdCancel_Click(); });
}

void PropertyDialog::marksEdited(QComboBox *combo)
{
    connect(combo, &QComboBox::currentIndexChanged, this, [this] { markEdited(); });
}

void PropertyDialog::Popup(ModuleDataPtr ModuleData,
                           clsDrawLine *DrawLine,
                           ScriptHost *ParentForm,
                           qint16 Index)
{
    m_ModuleData = std::move(ModuleData);
    m_DrawLine = DrawLine;
    m_ParentForm = ParentForm;
    m_hostWidget = ParentForm ? ParentForm->hostWidget() : nullptr;
    m_Index = Index;
    SetFormIcon(this);
    Load();
    show();
    if (const QScreen *screen = QGuiApplication::primaryScreen()) {
        QRect box = frameGeometry();
        box.moveCenter(screen->geometry().center());
        move(box.topLeft());
    }
    // A modal dialog holds its caller here until it has ended.
    if (isModal()) {
        QEventLoop loop;
        connect(this, &PropertyDialog::CompleteEdit, &loop, &QEventLoop::quit);
        loop.exec(QEventLoop::DialogExec);
    }
}

void PropertyDialog::Load()
{
    FillExitLists();
    LoadFields();
    m_Edited = false;
    setWindowTitle(m_ModuleData ? m_ModuleData->Name() : QString());
}

bool PropertyDialog::ValidateFields()
{
    return !m_nameBox || ValidateModuleName(*m_ModuleData, *m_ParentForm, m_nameBox->text());
}

QString PropertyDialog::exitValue(const QString &key) const
{
    return m_ModuleData->definition().Properties(key).Value().toString();
}

void PropertyDialog::cmdOk_Click()
{
    if (!ValidateFields())
        return;
    if (m_Edited && hostAlive())
        CommitFields();
    unload();
}

void PropertyDialog::cmdCancel_Click()
{
    m_Edited = false;
    unload();
}

void PropertyDialog::unload()
{
    if (m_completed)
        return;
    hide();
    deleteLater();
    complete();
}

void PropertyDialog::complete()
{
    if (m_completed)
        return;
    m_completed = true;
    emit CompleteEdit(m_Index, m_Edited);
}

void PropertyDialog::closeEvent(QCloseEvent *event)
{
    // Only the dialog's own buttons end it.
    event->ignore();
}

void PropertyDialog::fillExitCombos(const QList<ExitCombo> &combos)
{
    for (const ExitCombo &exit : combos)
        *exit.selection = -1;
    if (!hostAlive())
        return;
    ControlArray<VorelModule> &modules = m_ParentForm->cmVorelModule();
    if (modules.count() < 1)
        return;
    const int top = modules.ubound();
    for (int i = modules.lbound(); i <= top; ++i) {
        VorelModule *module = nullptr;
        try {
            module = moduleAt(*m_ParentForm, i);
        } catch (const IvrError &) {
            continue; // a gap: the scan goes on with the next position
        }
        if (module->ModuleType() == ConnectedType)
            continue;
        const QString caption = module->Caption();
        for (const ExitCombo &exit : combos) {
            exit.combo->addItem(caption.trimmed(), i);
            if (exit.storedValue == QLatin1Char('[') + caption + QLatin1Char(']'))
                *exit.selection = exit.combo->count() - 1;
        }
    }
}

void PropertyDialog::clearRow()
{
    const int top = m_ParentForm->cmVorelModule().ubound();
    for (int k = 0; k <= top; ++k)
        m_DrawLine->setLineMatrix(m_Index, qint16(k), 0);
}

void PropertyDialog::commitExit(QComboBox *combo, const QString &key)
{
    Definition &definition = m_ModuleData->definition();
    if (combo->currentIndex() >= 0) {
        definition.Properties(key).setValue(QLatin1Char('[') + combo->currentText()
                                            + QLatin1Char(']'));
        m_DrawLine->setLineMatrix(m_Index, qint16(combo->currentData().toInt()), 1);
    } else {
        definition.Properties(key).setValue(QString());
    }
}

bool PropertyDialog::ValidateModuleName(const ModuleData &module,
                                        ScriptHost &form,
                                        const QString &newName)
{
    const QString trimmed = newName.trimmed();
    if (trimmed.isEmpty()
        || QLatin1Char('[') + trimmed + QLatin1Char(']') == ScriptConstants::ReservedModuleName()) {
        MsgBox::show(QStringLiteral("Invalid Name"), QMessageBox::Critical);
        return false;
    }
    ControlArray<VorelModule> &modules = form.cmVorelModule();
    const int top = modules.ubound();
    int i = modules.lbound();
    while (i <= top) {
        try {
            const QString name = moduleAt(form, i)->moduleData()->Name();
            if (name != module.Name() && name == newName) {
                MsgBox::show(QStringLiteral("Duplicate Name"), QMessageBox::Critical);
                return false;
            }
            ++i;
        } catch (const IvrError &) {
            // A gap doubles the position: the ones between go unchecked. At
            // the top the scan ends.
            if (i >= top)
                break;
            i = i > 0 ? i + i : i + 1;
        }
    }
    return true;
}

} // namespace ivr
