#pragma once

#include <QString>

namespace ivr {

// Starts a program with no arguments, no window and no terminal, in a given
// folder, and returns at once. The start itself happens on a short-lived
// thread of its own, which also collects the program's end: the caller never
// waits for the fork, the exec or the program, and no finished child is left
// behind as a zombie. The result is only whether the program is there to run.
class DetachedSpawn
{
public:
    static bool start(const QString &program, const QString &workingFolder);
};

} // namespace ivr
