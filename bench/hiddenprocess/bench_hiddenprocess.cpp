// How long the caller waits for a hidden start to return: HiddenProcess
// (posix_spawn on a thread of its own) against QProcess::startDetached with
// the standard channels on /dev/null and the working folder set. The start
// of regSvr.sh lies on the way to the first window, so the time of the call
// itself is what counts, in a process as large as the designer at that point.
//
// bench_hiddenprocess [ballast-MiB...]   (default: 0 100 400)

#include "hiddenprocess.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <vector>

using namespace ivr;

namespace {

constexpr int kRuns = 40;

struct Times
{
    double median;
    double worst;
};

Times measure(const std::function<void()> &start)
{
    std::vector<double> times;
    for (int i = 0; i < kRuns; ++i) {
        QElapsedTimer timer;
        timer.start();
        start();
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
        // Let the program end, so that one start does not wait on another.
        HiddenProcess::waitForStarts();
    }
    std::sort(times.begin(), times.end());
    return {times[times.size() / 2], times.back()};
}

bool startDetached(const QString &program, const QString &folder)
{
    QProcess process;
    process.setProgram(program);
    process.setWorkingDirectory(folder);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QStringList sizes = app.arguments().mid(1);
    if (sizes.isEmpty())
        sizes = {QStringLiteral("0"), QStringLiteral("100"), QStringLiteral("400")};
    const QString program = QStringLiteral("/bin/true");
    const QString folder = QDir::tempPath();

    std::printf("%-12s %-34s %10s %10s\n", "ballast", "start call", "median ms", "worst ms");
    for (const QString &size : sizes) {
        // Touched memory stands for the designer's own: a fork copies the
        // page tables that map it.
        const size_t bytes = size_t(size.toULongLong()) * 1024 * 1024;
        std::unique_ptr<char[]> ballast(new char[bytes + 1]);
        std::memset(ballast.get(), 1, bytes + 1);

        const Times spawned = measure([&] { HiddenProcess::start(program, {}, folder); });
        const Times detached = measure([&] { startDetached(program, folder); });
        std::printf("%-12s %-34s %10.3f %10.3f\n",
                    qPrintable(size + QStringLiteral(" MiB")),
                    "HiddenProcess::start",
                    spawned.median,
                    spawned.worst);
        std::printf("%-12s %-34s %10.3f %10.3f\n",
                    qPrintable(size + QStringLiteral(" MiB")),
                    "QProcess::startDetached",
                    detached.median,
                    detached.worst);
    }
    return 0;
}
