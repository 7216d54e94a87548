#pragma once

#include <QtGlobal>

namespace ivr {

// The armed tool of the toolbox: a module type number, 0 for Select. It is
// global on purpose: it applies to whichever script window gets the click.
qint16 SelectedModuleType();
void setSelectedModuleType(qint16 type);

} // namespace ivr
