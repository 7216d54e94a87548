#pragma once

#include "moduledata.h"

#include <QString>
#include <QStringList>

namespace ivr {

// What a module type number means: its caption (the toolbox's tool tip),
// the dialog that edits it and its own keys. Its exits are the script
// library's ExitTables. A number that is not a module type gives an entry
// with nothing in it.
struct ModuleTypeInfo
{
    int type = -1;
    QString caption;    // "" for the types that are never shown
    QString dialogName; // "" for the types without a dialog
    QStringList ownKeys;
};

class ModuleTypes
{
public:
    static constexpr int EndCall = 0;
    static constexpr int Connected = 1;
    static constexpr int Common = ModuleData::CommonModuleType;

    static const ModuleTypeInfo &info(int type);
};

} // namespace ivr
