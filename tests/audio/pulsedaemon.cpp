#include "pulsedaemon.h"

#include <QFile>
#include <QProcess>

#include <csignal>

static const QString Socket = QStringLiteral("/native");

static bool signalDaemon(int signal)
{
    QFile pidFile(PulseDaemon::folder() + QStringLiteral("/run/pulse/pid"));
    const pid_t pid = pidFile.open(QIODevice::ReadOnly) ? pidFile.readAll().trimmed().toInt() : 0;
    return pid > 0 && ::kill(pid, signal) == 0;
}

QString PulseDaemon::folder()
{
    return qEnvironmentVariable("PULSE_SERVER")
            .remove(QStringLiteral("unix:"))
            .chopped(Socket.size());
}

bool PulseDaemon::start(const QString &folder)
{
    return QProcess::execute("sh", {IVR_PULSE_FIXTURE, "start", folder}) == 0;
}

bool PulseDaemon::stop(const QString &folder)
{
    return QProcess::execute("sh", {IVR_PULSE_FIXTURE, "stop", folder}) == 0;
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
    return pactl.waitForFinished(5000) && pactl.exitCode() == 0
           && !pactl.readAllStandardOutput().contains("Corked: no");
}
