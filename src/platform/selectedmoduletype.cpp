#include "selectedmoduletype.h"

namespace ivr {

namespace {
qint16 g_selected = 0;
}

qint16 SelectedModuleType()
{
    return g_selected;
}

void setSelectedModuleType(qint16 type)
{
    g_selected = type;
}

} // namespace ivr
