#include "hiddenprocess.h"

#include <QFile>
#include <QFileInfo>
#include <QList>

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace ivr {

namespace {

// posix_spawn borrows the caller's memory until the exec (no copy of the
// page tables, unlike fork), so the spawning thread is held only for the exec.
pid_t spawn(const QList<QByteArray> &argumentList, const QByteArray &folder)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    if (!folder.isEmpty())
        posix_spawn_file_actions_addchdir_np(&actions, folder.constData());

    // A session of its own, so that the program outlives a terminal that
    // closes; signals as a freshly started program expects them.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);

    std::vector<char *> argv;
    for (const QByteArray &argument : argumentList)
        argv.push_back(const_cast<char *>(argument.constData()));
    argv.push_back(nullptr);
    pid_t pid = 0;
    const int failed = posix_spawn(&pid, argv.front(), &actions, &attributes, argv.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return failed ? 0 : pid;
}

std::mutex g_pendingLock;
std::condition_variable g_pendingDone;
int g_pending = 0;

void spawnAndReap(const QList<QByteArray> &argumentList, const QByteArray &folder)
{
    const pid_t pid = spawn(argumentList, folder);
    {
        const std::lock_guard lock(g_pendingLock);
        --g_pending;
    }
    g_pendingDone.notify_all();
    if (pid <= 0)
        return;
    while (waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
    }
}

} // namespace

bool HiddenProcess::start(const QString &program,
                          const QStringList &arguments,
                          const QString &workingFolder)
{
    const QFileInfo info(program);
    if (!info.isFile() || !info.isExecutable())
        return false;
    QList<QByteArray> argumentList{QFile::encodeName(program)};
    for (const QString &argument : arguments)
        argumentList << argument.toLocal8Bit();
    {
        const std::lock_guard lock(g_pendingLock);
        ++g_pending;
    }
    std::thread(spawnAndReap, argumentList, QFile::encodeName(workingFolder)).detach();
    return true;
}

void HiddenProcess::waitForStarts()
{
    std::unique_lock lock(g_pendingLock);
    g_pendingDone.wait(lock, [] { return g_pending == 0; });
}

} // namespace ivr
