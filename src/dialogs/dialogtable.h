#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace ivr {

class PropertyDialog;

// How the script window hears that a dialog has ended.
enum class Completion {
    FinishEdit,  // arrows and names are brought in line (FinishEdit)
    EnableOnly,  // the window is only enabled again
    ScriptLevel, // as EnableOnly, for the dialogs of the whole script
};

struct DialogEntry
{
    Completion completion;
    std::function<PropertyDialog *(QWidget *owner)> make;
};

// The dialog makers, keyed by the dialog name that the module-type table
// gives each type ("frmPropPlay"). A name not here opens nothing.
class DialogTable
{
public:
    static const DialogEntry *find(const QString &dialogName);
};

} // namespace ivr
