#include "modulelist.h"

#include "ivrcheck.h"

namespace ivr {

void ModuleList::Add(ModuleDataPtr module)
{
    IVR_CHECK(module, return );
    m_modules.push_back(std::move(module));
}

ModuleDataPtr ModuleList::at(int i) const
{
    IVR_CHECK(i >= 0 && i < count(), return {});
    return m_modules[size_t(i)];
}

} // namespace ivr
