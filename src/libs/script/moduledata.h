#pragma once

#include "definition.h"

#include <QJsonObject>
#include <QString>

#include <memory>

namespace ivr {

class ModuleData;
using ModuleDataPtr = std::shared_ptr<ModuleData>;

// One module of a script: its name, its type and its Definition. Set
// ModuleType first, then Name; definition() hands out the same object on
// every call, so what one caller writes the next one reads.
class ModuleData
{
public:
    // The script-level module (CommonModule): never on the canvas, recognised
    // in a file by this type alone.
    static constexpr int CommonModuleType = 98;

    ModuleData() = default;

    // A module of that type with the library's defaults for a new module:
    // its exits "", a prompt that is spoken text, one play, one second between
    // replays, five seconds to wait, 1 to 10 digits, 30 seconds of recording.
    static ModuleDataPtr createNew(int type, const QString &name);

    QString Name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }
    int ModuleType() const { return m_moduleType; }
    void setModuleType(int type) { m_moduleType = type; }

    Definition &definition() { return m_definition; }
    const Definition &definition() const { return m_definition; }

    // Keys of the module's file entry beside its name, type and definition
    // that this version does not know (written by a newer one): kept so that
    // a save gives them back.
    const QJsonObject &unknownKeys() const { return m_unknownKeys; }
    void setUnknownKeys(const QJsonObject &keys) { m_unknownKeys = keys; }

private:
    QString m_name;
    int m_moduleType = 0;
    Definition m_definition;
    QJsonObject m_unknownKeys;
};

} // namespace ivr
