// bench_audio: how soon a prompt is heard after the Play button, and what
// synthesis and decoding cost. Prints median and worst of each.
#include "audition.h"
#include "flitevoices.h"
#include "sinkrecorder.h"
#include "speechvoice.h"
#include "wavereader.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

constexpr int Calls = 20;
constexpr int BlockBytes = 160; // 10 ms at 8 kHz, 16-bit

const char *const LongText
        = "Thank you for calling the billing line. Your call is important to us. "
          "All of our agents are busy at the moment, so please stay on the line "
          "and the next available agent will take your call. ";

const char *const Prompt = "Thank you for calling the billing line, please listen carefully "
                           "because our menu options "
                           "have changed since your last call";

void report(const char *what, QList<double> ms)
{
    if (ms.isEmpty()) {
        std::printf("%-44s no samples\n", what);
        return;
    }
    std::sort(ms.begin(), ms.end());
    const double median
            = ms.size() % 2 ? ms[ms.size() / 2] : (ms[ms.size() / 2 - 1] + ms[ms.size() / 2]) / 2;
    std::printf("%-44s median %7.1f ms   worst %7.1f ms   (%lld runs)\n",
                what,
                median,
                ms.last(),
                static_cast<long long>(ms.size()));
}

void spin(int ms)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < ms)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

// Milliseconds from the call to the first sounding 10 ms block the monitor
// delivers, or -1 when nothing sounded within two seconds.
double latencyOf(SinkRecorder &recorder, const std::function<void()> &play)
{
    qsizetype seen = recorder.takeAvailable().size();
    seen -= seen % BlockBytes;
    QElapsedTimer timer;
    timer.start();
    play();
    while (timer.elapsed() < 2000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 2);
        const QByteArray data = recorder.takeAvailable();
        for (; seen + BlockBytes <= data.size(); seen += BlockBytes) {
            if (SinkRecorder::isSounding(data.constData() + seen, BlockBytes))
                return double(timer.nsecsElapsed()) / 1e6;
        }
    }
    return -1;
}

void waitPlayedOut()
{
    while (ivr::SpeechVoice::instance().isPending())
        spin(10);
    spin(400);
}

// Milliseconds the caller waits in the call itself: what the window waits.
double callMs(const std::function<void()> &call)
{
    QElapsedTimer timer;
    timer.start();
    call();
    return double(timer.nsecsElapsed()) / 1e6;
}

} // namespace

int main(int argc, char **argv)
{
    // A private daemon unless the caller names one; it must be up before
    // the audio engine first looks for a server.
    QTemporaryDir daemonDir(QStringLiteral("/tmp/ivr-bench-XXXXXX"));
    bool ownDaemon = false;
    if (!qEnvironmentVariableIsSet("PULSE_SERVER")) {
        if (QProcess::execute(
                    QStringLiteral("sh"),
                    {QStringLiteral(IVR_PULSE_FIXTURE), QStringLiteral("start"), daemonDir.path()})
            != 0) {
            std::fprintf(stderr, "could not start pulseaudio\n");
            return 1;
        }
        ownDaemon = true;
        qputenv("PULSE_SERVER", ("unix:" + daemonDir.path() + "/native").toLocal8Bit());
        qputenv("HOME", (daemonDir.path() + "/home").toLocal8Bit());
        qputenv("XDG_RUNTIME_DIR", (daemonDir.path() + "/run").toLocal8Bit());
    }
    const auto stopDaemon = qScopeGuard([&] {
        if (ownDaemon)
            QProcess::execute(
                    QStringLiteral("sh"),
                    {QStringLiteral(IVR_PULSE_FIXTURE), QStringLiteral("stop"), daemonDir.path()});
    });

    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);

    ivr::FliteVoices voices;
    QList<double> synthMs;
    double promptSeconds = 0;
    for (int i = 0; i < Calls; ++i) {
        QElapsedTimer timer;
        timer.start();
        const QByteArray pcm = voices.synthesize(QString::fromLatin1(Prompt));
        synthMs << double(timer.nsecsElapsed()) / 1e6;
        promptSeconds = double(pcm.size()) / 16000.0;
    }

    const QString wave
            = QStringLiteral("/usr/share/asterisk/sounds/en_US_f_Allison/agent-pass.wav");
    QTemporaryDir work;
    const QString cdWave = work.filePath(QStringLiteral("cd.wav"));
    SinkRecorder::soxConvert(wave, {"-r", "44100", "-c", "2", "-b", "16"}, cdWave);
    QList<double> decodeMs;
    QList<double> decodeCdMs;
    for (int i = 0; i < Calls; ++i) {
        QElapsedTimer timer;
        timer.start();
        ivr::WaveReader::read(wave, nullptr);
        decodeMs << double(timer.nsecsElapsed()) / 1e6;
        timer.restart();
        ivr::WaveReader::read(cdWave, nullptr);
        decodeCdMs << double(timer.nsecsElapsed()) / 1e6;
    }

    SinkRecorder recorder;
    if (!recorder.start()) {
        std::fprintf(stderr, "parec cannot record the sink's monitor\n");
        return 1;
    }
    QList<double> speakMs;
    QList<double> waveMs;
    for (int i = 0; i < Calls; ++i) {
        const double ms = latencyOf(recorder, [] { ivr::SpeakText(QStringLiteral("Press one.")); });
        if (ms >= 0)
            speakMs << ms;
        waitPlayedOut();
    }
    // A tone that sounds from its first sample: what is measured is the
    // channel, not the pause a recorded prompt opens with.
    const QString tone = work.filePath(QStringLiteral("tone.wav"));
    QProcess::execute(
            QStringLiteral("sox"),
            {"-n", "-r", "8000", "-c", "1", "-b", "16", tone, "synth", "0.5", "sine", "440"});
    for (int i = 0; i < Calls; ++i) {
        const double ms = latencyOf(recorder, [&] { ivr::PlayWaveFile(tone); });
        if (ms >= 0)
            waveMs << ms;
        waitPlayedOut();
    }
    // After a few quiet seconds the channel lets the device sleep; the next
    // prompt wakes it.
    QList<double> wokenMs;
    for (int i = 0; i < 4; ++i) {
        spin(5000);
        const double ms = latencyOf(recorder, [&] { ivr::PlayWaveFile(tone); });
        if (ms >= 0)
            wokenMs << ms;
        waitPlayedOut();
    }
    recorder.stop();

    // What the window waits for: a ten-minute CD-rate stereo file and a
    // long text, each cut before it is through.
    const QString tenMinutes = work.filePath(QStringLiteral("ten-minutes.wav"));
    QProcess::execute(QStringLiteral("sox"),
                      {"-n",
                       "-r",
                       "44100",
                       "-c",
                       "2",
                       "-b",
                       "16",
                       tenMinutes,
                       "synth",
                       "600",
                       "sine",
                       "440"});
    QList<double> longWaveCallMs;
    QList<double> longTextCallMs;
    for (int i = 0; i < 5; ++i) {
        longWaveCallMs << callMs([&] { ivr::PlayWaveFile(tenMinutes); });
        spin(300);
        longTextCallMs << callMs([] { ivr::SpeakText(QString::fromLatin1(LongText).repeated(4)); });
        spin(300);
        ivr::SpeakText(QString());
        waitPlayedOut();
    }

    std::printf("20-word prompt: %.1f s of speech\n", promptSeconds);
    report("synthesise 20-word prompt", synthMs);
    report("decode 3.3 s prompt, 8 kHz PCM", decodeMs);
    report("decode 3.3 s prompt, 44.1 kHz stereo", decodeCdMs);
    report("SpeakText to first sound on the monitor", speakMs);
    report("PlayWaveFile to first sound on the monitor", waveMs);
    report("PlayWaveFile, first sound after 5 s quiet", wokenMs);
    report("PlayWaveFile call, 10 min 44.1 kHz stereo", longWaveCallMs);
    report("SpeakText call, 120-word text", longTextCallMs);
    if (speakMs.size() < Calls || waveMs.size() < Calls)
        std::printf("silent calls: speech %lld, wave %lld\n",
                    static_cast<long long>(Calls - speakMs.size()),
                    static_cast<long long>(Calls - waveMs.size()));
    // Let the channel close its sink the way the program does at its end.
    QTimer::singleShot(0, &app, &QCoreApplication::quit);
    app.exec();
    return 0;
}
