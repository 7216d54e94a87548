#pragma once

#include "modulelist.h"

#include <QString>

#include <optional>

namespace ivr {

// Reads and writes one script file (JSON, format "brindlewave-ivr-script").
// Both operations tell the user about a failure themselves, once, in a
// critical message box naming the file and what is wrong, and never throw.
class ScriptFile
{
public:
    // The modules of the file with their names in brackets ("[Welcome]"),
    // CommonModule (type 98) among them; nothing when the file is not a
    // script this program can read.
    std::optional<ModuleList> Load(const QString &path);

    // Writes the modules (names handed over without brackets) in place of
    // the file, atomically: Ok false means the old file, if any, stands as
    // it was.
    void Save(const QString &path, const ModuleList &list, bool &Ok);
};

} // namespace ivr
