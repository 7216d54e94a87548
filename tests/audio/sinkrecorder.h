#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>

// Records what the test daemon's null sink plays (its monitor, through
// parec) as 16-bit mono at 8 kHz, and measures it the way a listener
// would: in 100 ms windows, a window sounding when its RMS is above -50 dBFS.
class SinkRecorder
{
public:
    ~SinkRecorder();

    // False when parec cannot record (no daemon).
    bool start();
    QByteArray stop();
    // What has come in so far, without stopping.
    QByteArray takeAvailable();

    static constexpr int WindowMs = 100;
    static QList<bool> soundingWindows(const QByteArray &pcm);
    static double soundingSeconds(const QByteArray &pcm);
    // The longest silence between the first and the last sounding window.
    static double longestInnerGapSeconds(const QByteArray &pcm);
    static bool isSounding(const char *pcm, qsizetype bytes);

    // A sound file brought to the recorder's format by sox, for reference.
    static QByteArray soxPhonePcm(const QString &path);
    // sox <in> <options...> <out>; true when sox made the file.
    static bool soxConvert(const QString &in, const QStringList &outOptions, const QString &out);

private:
    QProcess m_parec;
    QByteArray m_data;
};
