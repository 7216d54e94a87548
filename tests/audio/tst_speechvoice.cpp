#include "audition.h"
#include "messagerecorder.h"
#include "pulsedaemon.h"
#include "sinkrecorder.h"
#include "speechvoice.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using ivr::SpeechVoice;

static const QString Prompts = QStringLiteral("/usr/share/asterisk/sounds/en_US_f_Allison/");
static const QString ShortText = QStringLiteral("Press one for billing.");

// Heard within 0.3 s of what was expected.
#define COMPARE_HEARD(pcm, expected)                                                               \
    QVERIFY2(qAbs(SinkRecorder::soundingSeconds(pcm) - (expected)) <= 0.3,                         \
             qPrintable(QStringLiteral("heard %1 s, expected %2 s")                                \
                                .arg(SinkRecorder::soundingSeconds(pcm))                           \
                                .arg(expected)))

// The channel heard through the test daemon's null sink.
class tst_SpeechVoice : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(qEnvironmentVariableIsSet("PULSE_SERVER"), "run through ctest: needs the daemon");
        m_shortTextSeconds = SinkRecorder::soundingSeconds(
                record([](SinkRecorder &) { ivr::SpeakText(ShortText); }));
        QVERIFY2(m_shortTextSeconds > 0.5, "speech did not sound (or parec cannot record)");
    }

    void textCutsWhatSounds_data()
    {
        QTest::addColumn<QStringList>("first");
        const QString longText = "Thank you for calling. All of our agents are busy at the moment. "
                                 "Please stay on the line for the next available agent.";
        QTest::newRow("second-text-not-cutting-first") << QStringList{"text:" + longText};
        QTest::newRow("queued-waves-not-cut")
                << QStringList{Prompts + "agent-pass.wav", Prompts + "auth-thankyou.wav"};
        QTest::newRow("wave-still-decoding-not-cut") << QStringList{longWave()};
    }
    // Half a second of the first, then the short text alone.
    void textCutsWhatSounds()
    {
        QFETCH(QStringList, first);
        const QByteArray heard = record([&](SinkRecorder &recorder) {
            for (const QString &what : first) {
                if (what.startsWith("text:"))
                    QVERIFY(ivr::SpeakText(what.mid(5)));
                else
                    ivr::PlayWaveFile(what);
            }
            QVERIFY(recorder.waitForSound(5000));
            QTest::qWait(500);
            QVERIFY(ivr::SpeakText(ShortText));
        });
        COMPARE_HEARD(heard, 0.5 + m_shortTextSeconds);
    }

    void playsInTurn_data()
    {
        QTest::addColumn<bool>("speakFirst");
        QTest::addColumn<QStringList>("waves");
        QTest::addColumn<QString>("soxOptions");
        const QStringList goodbye{"vm-goodbye.wav"};
        QTest::newRow("second-wave-late-or-lost")
                << false << QStringList{"agent-pass.wav", "auth-thankyou.wav"} << QString();
        QTest::newRow("mu-law-not-decoded") << false << goodbye << "-e u-law -b 8";
        QTest::newRow("cd-rate-stereo-not-resampled") << false << goodbye << "-r 44100 -c 2 -b 16";
        QTest::newRow("wave-queued-behind-speech-lost")
                << true << QStringList{"agent-pass.wav"} << QString();
        QTest::newRow("extensible-wave-refused") << false << goodbye << "-b 24";
    }
    void playsInTurn()
    {
        QFETCH(bool, speakFirst);
        QFETCH(QStringList, waves);
        QFETCH(QString, soxOptions);
        double expected = speakFirst ? m_shortTextSeconds : 0;
        double ownGap = 0.1;
        QStringList played;
        for (const QString &wave : waves) {
            const QByteArray reference = SinkRecorder::soxPhonePcm(Prompts + wave);
            expected += SinkRecorder::soundingSeconds(reference);
            ownGap = qMax(ownGap, SinkRecorder::longestInnerGapSeconds(reference));
            played << (soxOptions.isEmpty() ? Prompts + wave : m_dir.filePath(wave));
            if (!soxOptions.isEmpty())
                QVERIFY(SinkRecorder::soxConvert(
                        Prompts + wave, soxOptions.split(' '), played.last()));
        }
        MessageRecorder messages;
        const QByteArray heard = record([&](SinkRecorder &) {
            if (speakFirst)
                QVERIFY(ivr::SpeakText(ShortText));
            for (const QString &wave : played)
                ivr::PlayWaveFile(wave);
        });
        QCOMPARE(messages.count(), 0);
        COMPARE_HEARD(heard, expected);
        // The prompts' own pauses are a window or two; a late clip shows as a longer one.
        const double gap = SinkRecorder::longestInnerGapSeconds(heard);
        QVERIFY2(speakFirst || gap <= ownGap + 0.3,
                 qPrintable(QStringLiteral("gap of %1 s").arg(gap)));
    }

    void messages_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("message");
        const QString folder = m_dir.filePath("prompts");
        QDir().mkpath(folder);
        const QString text = m_dir.filePath("notes.wav"), flac = m_dir.filePath("flac.wav");
        QFile file(text);
        if (file.open(QIODevice::WriteOnly))
            file.write("Notes about the billing prompts, not a recording.\n");
        SinkRecorder::soxConvert(Prompts + "vm-goodbye.wav", {"-t", "flac"}, flac);
        QTest::newRow("missing-file") << m_dir.filePath("missing.wav") << "File Not Found ";
        QTest::newRow("folder-without-slash-is-no-file") << folder << "File Not Found ";
        QTest::newRow("text-file-named-wav") << text << "1 Format not recognised.";
        QTest::newRow("flac-named-wav-played") << flac << "1 Format not recognised.";
        QTest::newRow("folder-with-slash-passed-over") << folder + '/' << QString();
        QTest::newRow("no-voice") << QString() << "No TTS Voice Found";
    }
    void messages()
    {
        QFETCH(QString, path);
        QFETCH(QString, message);
        MessageRecorder messages;
        if (path.isEmpty()) {
            SpeechVoice::setNoVoicesForTesting(true);
            const auto restore = qScopeGuard([] { SpeechVoice::setNoVoicesForTesting(false); });
            QVERIFY(!ivr::SpeakText(ShortText));
        } else {
            ivr::PlayWaveFile(path);
        }
        QVERIFY(!SpeechVoice::instance().isPending());
        QCOMPARE(messages.lastText(), message);
        QCOMPARE(messages.count(), message.isEmpty() ? 0 : 1);
        QVERIFY(message.isEmpty() || messages.messages().first().icon == QMessageBox::Critical);
    }

    void madeOffTheCallersThreadAndCut_data()
    {
        QTest::addColumn<QString>("wave");
        QTest::addColumn<QString>("text");
        QTest::newRow("long-wave-decoded-by-caller-or-after-cut") << longWave() << QString();
        QTest::newRow("long-text-synthesised-by-the-caller")
                << QString() << QString("Thank you for calling the billing line. ").repeated(12);
    }
    // The call hands the work on and returns: the clip is made on the voice's
    // own thread and is not whole yet when the call is back. A cut stops the
    // making of the rest, not only its sound.
    void madeOffTheCallersThreadAndCut()
    {
        QFETCH(QString, wave);
        QFETCH(QString, text);
        std::atomic<QThread *> maker = nullptr;
        std::atomic<int> whole = 0;
        std::atomic<qint64> made = 0;
        QObject receiver;
        connect(
                &SpeechVoice::instance(),
                &SpeechVoice::clipReady,
                &receiver,
                [&](quint64, const QByteArray &pcm, bool last) {
                    maker = QThread::currentThread();
                    whole += last ? 1 : 0;
                    made += pcm.size();
                },
                Qt::DirectConnection);
        MessageRecorder messages;
        if (wave.isEmpty())
            QVERIFY(ivr::SpeakText(text));
        else
            ivr::PlayWaveFile(wave);
        QCOMPARE(whole.load(), 0);
        QTRY_VERIFY(maker.load());
        QVERIFY(maker.load() != QThread::currentThread());
        QCOMPARE(messages.count(), 0);
        QVERIFY(ivr::SpeakText(QString()));
        QTRY_VERIFY_WITH_TIMEOUT(!SpeechVoice::instance().isPending(), 30000);
        const qint64 tenMinutes = 600 * 8000 * 2;
        QVERIFY2(made < tenMinutes / 2, qPrintable(QStringLiteral("%1 bytes made").arg(made)));
    }

    // A silent channel lets the sound device sleep, and wakes for the next prompt.
    void corkedWhenIdle()
    {
        QTRY_VERIFY_WITH_TIMEOUT(PulseDaemon::allStreamsCorked(), 15000);
        COMPARE_HEARD(record([](SinkRecorder &) { ivr::SpeakText(ShortText); }),
                      m_shortTextSeconds);
    }

    void findsRestartedServer_data()
    {
        QTest::addColumn<bool>("corked");
        QTest::newRow("server-lost-while-playing-stays-lost") << false;
        QTest::newRow("server-lost-while-corked-stays-lost") << true;
    }
    // The user's sound server goes away during the session and a new one comes
    // up: an audition made before the audio engine has found the new server
    // sounds once it has.
    void findsRestartedServer()
    {
        QFETCH(bool, corked);
        const QString wave = Prompts + "agent-pass.wav";
        const QString first = PulseDaemon::folder();
        QTemporaryDir second(QDir::tempPath() + "/ivr-pulse-XXXXXX");
        QVERIFY(PulseDaemon::start(second.path()));
        const auto back = qScopeGuard([&] {
            PulseDaemon::start(first);
            PulseDaemon::use(first);
            PulseDaemon::stop(second.path());
        });
        if (corked)
            QTRY_VERIFY_WITH_TIMEOUT(PulseDaemon::allStreamsCorked(), 15000);
        else
            ivr::PlayWaveFile(wave);
        PulseDaemon::use(second.path());
        const QByteArray heard = record([&](SinkRecorder &) {
            QVERIFY(PulseDaemon::stop(first));
            QVERIFY(ivr::SpeakText(ShortText));
            ivr::PlayWaveFile(wave);
        });
        const double waveSeconds = SinkRecorder::soundingSeconds(SinkRecorder::soxPhonePcm(wave));
        COMPARE_HEARD(heard, m_shortTextSeconds + waveSeconds);
    }

private:
    // Records while `act` runs and until the channel has played out.
    static QByteArray record(const std::function<void(SinkRecorder &)> &act)
    {
        SinkRecorder recorder;
        if (!recorder.start())
            return {};
        act(recorder);
        if (!QTest::qWaitFor([] { return !SpeechVoice::instance().isPending(); }, 30000))
            return {};
        QTest::qWait(700); // what the device still holds
        return recorder.stop();
    }

    // Ten minutes of CD-rate stereo tone: seconds of decoding, sounding throughout.
    QString longWave()
    {
        const QString path = m_dir.filePath("ten-minutes.wav");
        if (!QFile::exists(path))
            QProcess::execute("sox",
                              QString("-n -r 44100 -c 2 -b 16 %1 synth 600 sine 440 vol 0.3")
                                      .arg(path)
                                      .split(' '));
        return path;
    }

    QTemporaryDir m_dir;
    double m_shortTextSeconds = 0;
};

QTEST_MAIN(tst_SpeechVoice)
#include "tst_speechvoice.moc"
