#include "modulelist.h"

#include "ivrcheck.h"

namespace ivr {

void ModuleList::Add(ModuleDataPtr module)
{
    IVR_CHECK(module, return );
    m_modules.push_back(std::move(module));
}

} // namespace ivr
