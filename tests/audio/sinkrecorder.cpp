#include "sinkrecorder.h"

#include <QDeadlineTimer>
#include <QtMath>

static const QString PhoneFormat = QStringLiteral("-r 8000 -c 1 -e signed-integer -b 16");

SinkRecorder::~SinkRecorder()
{
    m_parec.kill();
    m_parec.waitForFinished(2000);
}

bool SinkRecorder::start()
{
    m_data.clear();
    m_parec.start("parec",
                  QStringLiteral("--raw --format=s16le --rate=8000 --channels=1 "
                                 "--latency-msec=10")
                          .split(' '));
    // The monitor sends silence once connected: the first bytes mean recording has begun.
    for (QDeadlineTimer t(5000); m_data.isEmpty() && !t.hasExpired();) {
        if (!m_parec.waitForReadyRead(100) && m_parec.state() == QProcess::NotRunning)
            return false;
        m_data += m_parec.readAllStandardOutput();
    }
    return !m_data.isEmpty();
}

QByteArray SinkRecorder::takeAvailable()
{
    return m_data += m_parec.readAllStandardOutput();
}

bool SinkRecorder::waitForSound(int timeoutMs)
{
    constexpr qsizetype BlockBytes = 160; // 10 ms
    qsizetype seen = takeAvailable().size();
    seen -= seen % BlockBytes;
    for (QDeadlineTimer t(timeoutMs); !t.hasExpired(); m_parec.waitForReadyRead(20)) {
        for (const QByteArray &data = takeAvailable(); seen + BlockBytes <= data.size();
             seen += BlockBytes) {
            if (isSounding(data.constData() + seen, BlockBytes))
                return true;
        }
    }
    return false;
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
    double sum = 0;
    for (qsizetype i = 0; i < bytes / 2; ++i)
        sum += double(samples[i]) * samples[i];
    return bytes >= 2 && qSqrt(sum / double(bytes / 2)) > qPow(10.0, -50.0 / 20.0) * 32768.0;
}

QList<bool> SinkRecorder::soundingWindows(const QByteArray &pcm)
{
    constexpr int WindowBytes = 8000 * 2 * WindowMs / 1000;
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
    const QList<bool> w = soundingWindows(pcm);
    int longest = 0, run = 0;
    for (qsizetype i = w.indexOf(true); i >= 0 && i <= w.lastIndexOf(true); ++i)
        longest = qMax(longest, run = w[i] ? 0 : run + 1);
    return double(longest) * WindowMs / 1000.0;
}

bool SinkRecorder::soxConvert(const QString &in, const QStringList &outOptions, const QString &out)
{
    return QProcess::execute("sox", QStringList{in} + outOptions + QStringList{out}) == 0;
}

QByteArray SinkRecorder::soxPhonePcm(const QString &path)
{
    QProcess sox;
    sox.start("sox", QStringList{path, "-t", "raw"} + PhoneFormat.split(' ') + QStringList{"-"});
    sox.waitForFinished(30000);
    return sox.readAllStandardOutput();
}
