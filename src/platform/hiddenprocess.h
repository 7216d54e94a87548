#pragma once

#include <QString>
#include <QStringList>

namespace ivr {

// Starts a program without a window, in a given folder, without waiting for
// it. The result is only whether it could be started.
class HiddenProcess
{
public:
    static bool start(const QString &program,
                      const QStringList &arguments,
                      const QString &workingFolder);
};

} // namespace ivr
