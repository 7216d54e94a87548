#pragma once

#include "moduledata.h"

#include <QJsonObject>

#include <vector>

namespace ivr {

// The modules of one script in the order they were added: the canvas
// modules in index order, then CommonModule.
class ModuleList
{
public:
    void Add(ModuleDataPtr module);
    int count() const { return int(m_modules.size()); }

    auto begin() const { return m_modules.begin(); }
    auto end() const { return m_modules.end(); }

    // Top-level keys of the file beside "format", "version" and "modules"
    // that this version does not know: kept so that a save gives them back.
    const QJsonObject &unknownKeys() const { return m_unknownKeys; }
    void setUnknownKeys(const QJsonObject &keys) { m_unknownKeys = keys; }

private:
    std::vector<ModuleDataPtr> m_modules;
    QJsonObject m_unknownKeys;
};

} // namespace ivr
