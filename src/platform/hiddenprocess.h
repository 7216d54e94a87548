#pragma once

#include <QString>
#include <QStringList>

namespace ivr {

// Starts a program without a window or terminal, in a given folder, and
// returns at once: a short-lived thread of its own starts it (posix_spawn,
// without a copy of the process as fork would make) and collects its end, so
// the caller waits neither for the start nor for the program, and no finished
// child is left behind as a zombie. The result is only whether the program is
// there to run.
class HiddenProcess
{
public:
    static bool start(const QString &program,
                      const QStringList &arguments,
                      const QString &workingFolder);
    // Returns once every program asked for has been started (not ended), so
    // that a process about to end does not take a start with it.
    static void waitForStarts();
};

} // namespace ivr
