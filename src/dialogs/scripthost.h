#pragma once

#include "controlarray.h"
#include "moduledata.h"

class QWidget;
class VorelModule;

namespace ivr {

class clsDrawLine;
class CommonDialog;

// What a property dialog sees of the script window it serves: the modules
// (for its exit lists and the name check), the link matrix it marks, the
// script-level module and the file picker it browses with. The window
// implements it; a dialog never includes the window itself, and it watches
// the window's life through hostWidget().
class ScriptHost
{
public:
    virtual ~ScriptHost() = default;
    virtual ControlArray<VorelModule> &cmVorelModule() = 0;
    virtual clsDrawLine &DrawLine() = 0;
    virtual ModuleDataPtr CommonModule() const = 0;
    // The frame's shared picker, or the window's own where there is no frame.
    virtual CommonDialog &commonDialog() = 0;
    virtual QWidget *hostWidget() = 0;
};

} // namespace ivr
