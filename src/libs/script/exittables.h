#pragma once

#include <QStringList>

namespace ivr {

// The walks over a module's exits. They do not cover the same keys, and the
// differences are kept on purpose: a database query's OnNoRecord and both
// exits of a program module are renamed with their target but get no arrow
// when a script is opened.
enum class ExitWalk {
    DialogWrites, // what a module's dialog writes, and what a new module starts with
    Rename,       // what a rename of the target is carried to
    OpenScript,   // what opening a script turns into arrows
};

// The one table of which exit keys each module type has, with a column for
// each walk.
class ExitTables
{
public:
    // The exit keys of a module type for one walk, in the walk's order; none
    // for a type without exits or a number that is no module type.
    static QStringList keys(int moduleType, ExitWalk walk);
};

} // namespace ivr
