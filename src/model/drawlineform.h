#pragma once

#include "controlarray.h"

class QWidget;
class VorelDirection;
class VorelModule;

namespace ivr {

// What the link matrix needs of a script window: its module and arrow
// arrays and its canvas. The window implements it; the matrix holds no
// reference to it between calls.
class DrawLineForm
{
public:
    virtual ~DrawLineForm() = default;
    virtual ControlArray<VorelModule> &cmVorelModule() = 0;
    virtual ControlArray<VorelDirection> &VorelDirection1() = 0;
    virtual QWidget *picMain() = 0;
};

} // namespace ivr
