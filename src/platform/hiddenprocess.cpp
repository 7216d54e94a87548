#include "hiddenprocess.h"

#include <QFileInfo>
#include <QProcess>

namespace ivr {

bool HiddenProcess::start(const QString &program,
                          const QStringList &arguments,
                          const QString &workingFolder)
{
    const QFileInfo info(program);
    if (!info.isFile() || !info.isExecutable())
        return false;
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setWorkingDirectory(workingFolder);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}

} // namespace ivr
