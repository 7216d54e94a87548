#pragma once

#include <QString>

namespace ivr {

// The fixed module names and the file suffix of the script library. The
// window strips the first and last character of the three names to get the
// plain name, and cuts exactly ScriptSuffix().size() characters from a path
// to make a caption, so the bracket form and the four-character suffix are
// binding.
class ScriptConstants
{
public:
    static QString ConnectedModuleKey(); // "[Connected]", the module of type 1
    static QString EndModuleKey();       // "[End Call]", the module of type 0
    static QString ReservedModuleName(); // "[Common]", the module of type 98
    static QString ScriptSuffix();       // ".ivr"
};

} // namespace ivr
