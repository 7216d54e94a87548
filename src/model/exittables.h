#pragma once

#include <QStringList>

namespace ivr {

// The three walkers over a module's exits. They do not cover the same keys,
// and the differences are kept on purpose: a database query's OnNoRecord
// and both exits of a program module are renamed with their target but get
// no arrow when a script is opened.
enum class ExitWalk {
    DialogWrites, // what a module's dialog writes
    Rename,       // what a rename of the target is carried to
    OpenScript,   // what opening a script turns into arrows
};

class ExitTables
{
public:
    // The exit keys of a module type for one walker, in the walker's order.
    static QStringList keys(int moduleType, ExitWalk walk);
};

} // namespace ivr
