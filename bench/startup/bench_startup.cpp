// Cold start to the first painted main window, in turns: the designer (from a
// program folder of its own, enquiry form off), a bare program linking the
// same libraries, and a bare Qt Widgets program. All three get the same
// environment (platform plugin included); each round starts with a different
// one, and each start waits until the machine has settled from the last one
// (the designer leaves its registration script running), so that no program
// pays for another's leftovers. Prints the medians.
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThread>

#include <algorithm>
#include <cstdio>

namespace {

// Long enough for a registration script started by the last program to end.
constexpr unsigned long SettleMs = 100;

double firstPaintMs(const QString &program, const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::SeparateChannels);
    QElapsedTimer clock;
    clock.start();
    process.start(program, {});
    if (!process.waitForStarted(10000))
        return -1;
    QByteArray out;
    while (!out.contains("first-paint")) {
        if (!process.waitForReadyRead(20000))
            return -1;
        out += process.readAllStandardOutput();
    }
    const double elapsed = double(clock.nsecsElapsed()) / 1e6;
    process.waitForFinished(10000);
    return elapsed;
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    const qsizetype n = values.size();
    if (n == 0)
        return -1;
    return n % 2 ? values.at(n / 2) : (values.at(n / 2 - 1) + values.at(n / 2)) / 2;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, atoi(argv[1])) : 11;
    QTextStream out(stdout);

    QTemporaryDir work;
    const QString folder = work.filePath(QStringLiteral("program"));
    // show_reg_form is 1 there: no enquiry form in the way.
    if (QProcess::execute(QStringLiteral(IVR_MAKE_PROGRAM_FOLDER), {folder}) != 0) {
        out << "cannot make the program folder\n";
        return 1;
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString home = folder + QStringLiteral("/home");
    environment.insert(QStringLiteral("HOME"), home);
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/.config"));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/.local/share"));
    environment.insert(QStringLiteral("XDG_CACHE_HOME"), home + QStringLiteral("/.cache"));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), work.filePath(QStringLiteral("run")));
    QDir().mkpath(work.filePath(QStringLiteral("run")));
    // As a session's runtime folder is: Qt checks the mode and warns otherwise.
    QFile::setPermissions(work.filePath(QStringLiteral("run")),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    if (!environment.contains(QStringLiteral("QT_QPA_PLATFORM")))
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("IVR_EXIT_AFTER_FIRST_PAINT"), QStringLiteral("1"));

    const QString programs[] = {folder + QStringLiteral("/ivr-designer"),
                                QStringLiteral(IVR_BARE_FULL),
                                QStringLiteral(IVR_BARE_WIDGETS)};
    const char *const names[] = {"designer", "bare, same libraries", "bare, Qt Widgets only"};
    QList<double> times[3];
    // One warm-up round fills the file cache alike for all three.
    for (const QString &program : programs)
        firstPaintMs(program, environment);
    for (int run = 0; run < runs; ++run) {
        for (int turn = 0; turn < 3; ++turn) {
            const int i = (run + turn) % 3;
            QThread::msleep(SettleMs);
            const double ms = firstPaintMs(programs[i], environment);
            if (ms < 0) {
                out << "no first paint from " << programs[i] << "\n";
                return 1;
            }
            times[i] << ms;
        }
    }
    for (int i = 0; i < 3; ++i)
        out << qSetFieldWidth(24) << Qt::left << names[i] << qSetFieldWidth(0) << " median "
            << QString::number(median(times[i]), 'f', 1) << " ms over " << runs << " runs\n";
    out << "designer / bare with the same libraries: "
        << QString::number(median(times[0]) / median(times[1]), 'f', 2) << "\n";
    out << "designer / bare Qt Widgets: "
        << QString::number(median(times[0]) / median(times[2]), 'f', 2) << "\n";
    return 0;
}
