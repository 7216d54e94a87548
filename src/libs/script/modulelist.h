#pragma once

#include "moduledata.h"

#include <vector>

namespace ivr {

// The modules of one script in the order they were added: the canvas
// modules in index order, then CommonModule.
class ModuleList
{
public:
    void Add(ModuleDataPtr module);
    int count() const { return int(m_modules.size()); }
    // Null for an index out of range.
    ModuleDataPtr at(int i) const;

    auto begin() const { return m_modules.begin(); }
    auto end() const { return m_modules.end(); }

private:
    std::vector<ModuleDataPtr> m_modules;
};

} // namespace ivr
