#pragma once

#include <QString>

namespace ivr {

// Starts a program with no arguments, no window and no terminal, in a given
// folder, and returns once it has been started: no copy of the process is
// made for it (as fork would), and the caller never waits for the program. A
// short-lived thread collects its end, so no finished child is left behind as
// a zombie. The result is only whether the program could be started.
class DetachedSpawn
{
public:
    static bool start(const QString &program, const QString &workingFolder);
};

} // namespace ivr
