#include "pulsedaemon.h"

#include <QFile>
#include <QProcess>

#include <csignal>

namespace {

const QString Socket = QStringLiteral("/native");

bool signalDaemon(int signal)
{
    QFile pidFile(PulseDaemon::folder() + QStringLiteral("/run/pulse/pid"));
    if (!pidFile.open(QIODevice::ReadOnly))
        return false;
    const pid_t pid = pid_t(pidFile.readAll().trimmed().toLongLong());
    return pid > 0 && ::kill(pid, signal) == 0;
}

bool fixture(const char *command, const QString &folder)
{
    return QProcess::execute("sh", {IVR_PULSE_FIXTURE, command, folder}) == 0;
}

} // namespace

QString PulseDaemon::folder()
{
    QString server = qEnvironmentVariable("PULSE_SERVER");
    server.remove(QStringLiteral("unix:"));
    return server.chopped(Socket.size());
}

bool PulseDaemon::start(const QString &folder)
{
    return fixture("start", folder);
}

bool PulseDaemon::stop(const QString &folder)
{
    return fixture("stop", folder);
}

void PulseDaemon::use(const QString &folder)
{
    qputenv("PULSE_SERVER", ("unix:" + folder + Socket).toLocal8Bit());
}

bool PulseDaemon::freeze()
{
    return signalDaemon(SIGSTOP);
}

bool PulseDaemon::thaw()
{
    return signalDaemon(SIGCONT);
}

bool PulseDaemon::allStreamsCorked()
{
    QProcess pactl;
    pactl.start("pactl", {"list", "sink-inputs"});
    if (!pactl.waitForFinished(5000) || pactl.exitCode() != 0)
        return false;
    return !pactl.readAllStandardOutput().contains("Corked: no");
}
