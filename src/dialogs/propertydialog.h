#pragma once

#include "moduledata.h"
#include "promptgroup.h"

#include <QDialog>
#include <QList>
#include <QPointer>

class QComboBox;
class QLineEdit;
class QPushButton;

namespace ivr {

class clsDrawLine;
class ScriptHost;

// What every property dialog shares: how it opens, what marks it as edited,
// how OK and Cancel end it, how exits and links are written back and how a
// module name is checked. Each dialog composes the steps in its own order.
//
// A dialog is modeless and owned by the main window, never by the script
// window (which disables itself while the dialog is open). Only its own
// buttons end it: Enter and Escape do nothing and the window manager's close
// is ignored. Its completion (CompleteEdit) runs exactly once, on whichever
// unload path comes first: OK, Cancel, the window's close, the program's end.
class PropertyDialog : public QDialog
{
    Q_OBJECT

public:
    ~PropertyDialog() override;

    // The one public entry: keeps the four and shows the dialog, modeless,
    // after its opening steps. Returns as soon as the dialog is up; a modal
    // dialog (the wave table) returns once it has ended.
    void
    Popup(ModuleDataPtr ModuleData, clsDrawLine *DrawLine, ScriptHost *ParentForm, qint16 Index);
    // Ends the dialog: the completion, once, then the object goes. The window
    // calls it once its own close has been accepted.
    void unload();

    bool Edited() const { return m_Edited; }
    qint16 Index() const { return m_Index; }
    // The topic F1 opens.
    virtual int helpContext() const = 0;
    // True when the dialog may close; says why not itself. By default the
    // name check on the dialog's name box, if it has one.
    virtual bool ValidateFields();

    // The shared name check: true when newName may be the name of module.
    static bool
    ValidateModuleName(const ModuleData &module, ScriptHost &form, const QString &newName);

signals:
    void CompleteEdit(qint16 Index, bool Edited);

public slots:
    // Escape ends nothing.
    void reject() override {}

protected:
    explicit PropertyDialog(QWidget *parent);

    // The opening steps after the icon: by default the exit lists, the
    // fields, Edited cleared and the module's name as the title.
    virtual void Load();
    virtual void FillExitLists() {}
    virtual void LoadFields() {}
    virtual void CommitFields() {}
    // OK: the check, the commit when something was edited, the unload.
    virtual void cmdOk_Click();
    void cmdCancel_Click();

    // Wiring for the dialog's own controls.
    void connectButtons(QPushButton *ok, QPushButton *cancel);
    void markEdited() { m_Edited = true; }
    void setEdited(bool edited) { m_Edited = edited; }
    void marksEdited(QComboBox *combo);
    template<typename Widget, typename Signal>
    void marksEdited(Widget *widget, Signal signal)
    {
        connect(widget, signal, this, [this] { markEdited(); });
    }
    void fixWindow();
    // The box the module's name is typed in, for the default check.
    void setNameBox(QLineEdit *box) { m_nameBox = box; }
    // An exit's stored value, "[Target]" or "".
    QString exitValue(const QString &key) const;
    // The prompt group, marking this dialog and browsing with its window's picker.
    PromptGroup *makePromptGroup(const PromptGroup::Controls &controls, PromptGroup::Browse browse);

    // Exit combos: every module but Connected, by array position, with the
    // position of the one the stored value names (the last match wins).
    struct ExitCombo
    {
        QComboBox *combo;
        QString storedValue;
        int *selection;
    };
    void fillExitCombos(const QList<ExitCombo> &combos);
    // Writes an exit from its combo: "[Text]" and a mark in the matrix, or "".
    void commitExit(QComboBox *combo, const QString &key);
    void clearRow();
    bool hostAlive() const { return !m_hostWidget.isNull(); }

    ModuleDataPtr m_ModuleData;
    clsDrawLine *m_DrawLine = nullptr;
    ScriptHost *m_ParentForm = nullptr;
    qint16 m_Index = -1;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void complete();

    QPointer<QWidget> m_hostWidget;
    QLineEdit *m_nameBox = nullptr;
    bool m_Edited = false;
    bool m_completed = false;
};

} // namespace ivr
