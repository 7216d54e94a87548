#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>

// Records the test daemon's null sink monitor (parec) as 16-bit mono at
// 8 kHz and measures it in 100 ms windows, sounding above -50 dBFS RMS.
class SinkRecorder
{
public:
    ~SinkRecorder();

    bool start(); // false when parec cannot record
    QByteArray stop();
    QByteArray takeAvailable();       // what has come in so far
    bool waitForSound(int timeoutMs); // sound after what has come in so far

    static constexpr int WindowMs = 100;
    static QList<bool> soundingWindows(const QByteArray &pcm);
    static double soundingSeconds(const QByteArray &pcm);
    // The longest silence between the first and the last sounding window.
    static double longestInnerGapSeconds(const QByteArray &pcm);
    static bool isSounding(const char *pcm, qsizetype bytes);

    static QByteArray soxPhonePcm(const QString &path); // a file in the recorder's format
    static bool soxConvert(const QString &in, const QStringList &outOptions, const QString &out);

private:
    QProcess m_parec;
    QByteArray m_data;
};
