#pragma once

#include <QString>

namespace ivr {

class ScriptUtility
{
public:
    // The script file extension without its point, for the file dialogs' filters.
    static QString ScriptExtension();

    // True for an existing regular file. A path that ends in "/" and names a
    // folder is true as well: the forms pass such a listing entry over in
    // silence. A folder named without the slash, "" and a missing path are
    // false.
    static bool FileExists(const QString &path);
};

} // namespace ivr
