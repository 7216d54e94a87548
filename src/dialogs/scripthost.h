#pragma once

#include "controlarray.h"
#include "moduledata.h"

class QWidget;
class VorelModule;

namespace ivr {

class clsDrawLine;

// What a property dialog sees of the script window it serves: the modules
// (for its exit lists and the name check), the link matrix it marks and the
// script-level module. The window implements it; a dialog never includes
// the window itself.
class ScriptHost
{
public:
    virtual ~ScriptHost() = default;
    virtual ControlArray<VorelModule> &cmVorelModule() = 0;
    virtual clsDrawLine &DrawLine() = 0;
    virtual ModuleDataPtr CommonModule() const = 0;
    virtual QWidget *hostWidget() = 0;
};

} // namespace ivr
