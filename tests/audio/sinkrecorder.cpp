#include "sinkrecorder.h"

#include <QElapsedTimer>
#include <QThread>
#include <QtMath>

namespace {
constexpr int Rate = 8000;
constexpr int WindowBytes = Rate * 2 * SinkRecorder::WindowMs / 1000;
const double Threshold = qPow(10.0, -50.0 / 20.0) * 32768.0;
} // namespace

SinkRecorder::~SinkRecorder()
{
    if (m_parec.state() != QProcess::NotRunning) {
        m_parec.kill();
        m_parec.waitForFinished(2000);
    }
}

bool SinkRecorder::start()
{
    m_data.clear();
    m_parec.setProcessChannelMode(QProcess::SeparateChannels);
    m_parec.start(QStringLiteral("parec"),
                  QStringLiteral("--raw --format=s16le --rate=8000 --channels=1 --latency-msec=10")
                          .split(' '));
    if (!m_parec.waitForStarted(5000))
        return false;
    // The monitor sends silence from the moment the stream is connected, so
    // the first bytes say that the recording has really begun.
    QElapsedTimer timer;
    timer.start();
    while (m_parec.bytesAvailable() == 0 && timer.elapsed() < 5000) {
        if (!m_parec.waitForReadyRead(100) && m_parec.state() == QProcess::NotRunning)
            return false;
    }
    m_data += m_parec.readAllStandardOutput();
    return !m_data.isEmpty();
}

QByteArray SinkRecorder::takeAvailable()
{
    m_data += m_parec.readAllStandardOutput();
    return m_data;
}

QByteArray SinkRecorder::stop()
{
    m_data += m_parec.readAllStandardOutput();
    m_parec.terminate();
    m_parec.waitForFinished(5000);
    m_data += m_parec.readAllStandardOutput();
    m_data.chop(m_data.size() % 2);
    return m_data;
}

bool SinkRecorder::isSounding(const char *pcm, qsizetype bytes)
{
    const auto *samples = reinterpret_cast<const qint16 *>(pcm);
    const qsizetype count = bytes / 2;
    if (count == 0)
        return false;
    double sum = 0;
    for (qsizetype i = 0; i < count; ++i)
        sum += double(samples[i]) * samples[i];
    return qSqrt(sum / double(count)) > Threshold;
}

QList<bool> SinkRecorder::soundingWindows(const QByteArray &pcm)
{
    QList<bool> windows;
    for (qsizetype at = 0; at + WindowBytes <= pcm.size(); at += WindowBytes)
        windows << isSounding(pcm.constData() + at, WindowBytes);
    return windows;
}

double SinkRecorder::soundingSeconds(const QByteArray &pcm)
{
    return double(soundingWindows(pcm).count(true)) * WindowMs / 1000.0;
}

double SinkRecorder::longestInnerGapSeconds(const QByteArray &pcm)
{
    const QList<bool> windows = soundingWindows(pcm);
    int longest = 0, run = 0;
    for (qsizetype i = windows.indexOf(true); i >= 0 && i <= windows.lastIndexOf(true); ++i) {
        run = windows[i] ? 0 : run + 1;
        longest = qMax(longest, run);
    }
    return double(longest) * WindowMs / 1000.0;
}

bool SinkRecorder::soxConvert(const QString &in, const QStringList &outOptions, const QString &out)
{
    QProcess sox;
    sox.start(QStringLiteral("sox"), QStringList{in} + outOptions + QStringList{out});
    return sox.waitForFinished(30000) && sox.exitStatus() == QProcess::NormalExit
           && sox.exitCode() == 0;
}

QByteArray SinkRecorder::soxPhonePcm(const QString &path)
{
    QProcess sox;
    sox.start(QStringLiteral("sox"),
              QStringList{path}
                      + QStringLiteral("-t raw -r 8000 -c 1 -e signed-integer -b 16 -").split(' '));
    sox.waitForFinished(30000);
    return sox.readAllStandardOutput();
}
