#include "audition.h"
#include "messagerecorder.h"
#include "sinkrecorder.h"
#include "speechvoice.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using ivr::SpeechVoice;

namespace {

const QString Prompts = QStringLiteral("/usr/share/asterisk/sounds/en_US_f_Allison/");
const QString ShortText = QStringLiteral("Press one for billing.");
const QString LongText = QStringLiteral(
        "Thank you for calling. All of our agents are busy at the moment. Please stay on the "
        "line and your call will be answered by the next available agent.");
constexpr double Tolerance = 0.3;

} // namespace

// The channel heard through a real sound server: the test daemon's null
// sink, recorded from its monitor.
class tst_SpeechVoice : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void secondTextCutsFirst();
    void twoWavesPlayBackToBack();
    void waveFormatsPlay_data();
    void waveFormatsPlay();
    void waveQueuedBehindSpeechPlaysAfterIt();
    void messages_data();
    void messages();
    void noVoiceSaysSo();

private:
    // Records while `act` runs and until the channel has played out.
    QByteArray record(const std::function<void()> &act);
    double referenceSeconds(const QString &path);

    QTemporaryDir m_dir;
    double m_shortTextSeconds = 0;
};

QByteArray tst_SpeechVoice::record(const std::function<void()> &act)
{
    SinkRecorder recorder;
    if (!recorder.start())
        return {};
    act();
    if (!QTest::qWaitFor([] { return !SpeechVoice::instance().isPending(); }, 30000))
        return {};
    // What the device still holds plays out in well under this.
    QTest::qWait(700);
    return recorder.stop();
}

double tst_SpeechVoice::referenceSeconds(const QString &path)
{
    return SinkRecorder::soundingSeconds(SinkRecorder::soxPhonePcm(path));
}

void tst_SpeechVoice::initTestCase()
{
    QVERIFY2(qEnvironmentVariableIsSet("PULSE_SERVER"), "run through ctest: needs the test daemon");
    QVERIFY(m_dir.isValid());
    SinkRecorder probe;
    QVERIFY2(probe.start(), "parec cannot record the test daemon's sink");
    probe.stop();

    const QByteArray alone = record([] { QVERIFY(ivr::SpeakText(ShortText)); });
    m_shortTextSeconds = SinkRecorder::soundingSeconds(alone);
    QVERIFY2(m_shortTextSeconds > 0.5, "speech did not sound at all");
}

void tst_SpeechVoice::secondTextCutsFirst()
{
    constexpr int FirstPlaysMs = 500;
    const QByteArray both = record([] {
        QVERIFY(ivr::SpeakText(LongText));
        QTest::qWait(FirstPlaysMs);
        QVERIFY(ivr::SpeakText(ShortText));
    });
    const double heard = SinkRecorder::soundingSeconds(both);
    const double expected = FirstPlaysMs / 1000.0 + m_shortTextSeconds;
    QVERIFY2(
            qAbs(heard - expected) <= Tolerance,
            qPrintable(QStringLiteral("heard %1 s, expected about %2 s").arg(heard).arg(expected)));
}

void tst_SpeechVoice::twoWavesPlayBackToBack()
{
    const QString first = Prompts + QStringLiteral("agent-pass.wav");
    const QString second = Prompts + QStringLiteral("auth-thankyou.wav");
    const QByteArray both = record([&] {
        ivr::PlayWaveFile(first);
        ivr::PlayWaveFile(second);
    });
    const double heard = SinkRecorder::soundingSeconds(both);
    const double expected = referenceSeconds(first) + referenceSeconds(second);
    QVERIFY2(
            qAbs(heard - expected) <= Tolerance,
            qPrintable(QStringLiteral("heard %1 s, expected about %2 s").arg(heard).arg(expected)));

    // The prompts' own pauses are shorter than a window or two; a late
    // second clip shows as a longer one.
    const double ownGap
            = qMax(SinkRecorder::longestInnerGapSeconds(SinkRecorder::soxPhonePcm(first)),
                   SinkRecorder::longestInnerGapSeconds(SinkRecorder::soxPhonePcm(second)));
    const double gap = SinkRecorder::longestInnerGapSeconds(both);
    QVERIFY2(gap <= qMax(ownGap, 0.1) + 0.3, qPrintable(QStringLiteral("gap of %1 s").arg(gap)));
}

void tst_SpeechVoice::waveFormatsPlay_data()
{
    QTest::addColumn<QStringList>("soxOptions");
    QTest::addColumn<QString>("suffix");
    QTest::newRow("mu-law-prompt-decoded")
            << QStringList{"-e", "u-law", "-b", "8"} << QStringLiteral("ulaw.wav");
    QTest::newRow("cd-rate-stereo-resampled")
            << QStringList{"-r", "44100", "-c", "2", "-b", "16"} << QStringLiteral("cd.wav");
}

void tst_SpeechVoice::waveFormatsPlay()
{
    QFETCH(QStringList, soxOptions);
    QFETCH(QString, suffix);
    const QString original = Prompts + QStringLiteral("vm-goodbye.wav");
    const QString copy = m_dir.filePath(suffix);
    QVERIFY(SinkRecorder::soxConvert(original, soxOptions, copy));

    MessageRecorder messages;
    const QByteArray heard = record([&] { ivr::PlayWaveFile(copy); });
    QCOMPARE(messages.count(), 0);
    const double seconds = SinkRecorder::soundingSeconds(heard);
    const double expected = referenceSeconds(original);
    QVERIFY2(qAbs(seconds - expected) <= Tolerance,
             qPrintable(
                     QStringLiteral("heard %1 s, expected about %2 s").arg(seconds).arg(expected)));
}

void tst_SpeechVoice::waveQueuedBehindSpeechPlaysAfterIt()
{
    const QString wave = Prompts + QStringLiteral("agent-pass.wav");
    const QByteArray heard = record([&] {
        QVERIFY(ivr::SpeakText(ShortText));
        ivr::PlayWaveFile(wave);
    });
    const double seconds = SinkRecorder::soundingSeconds(heard);
    const double expected = m_shortTextSeconds + referenceSeconds(wave);
    QVERIFY2(qAbs(seconds - expected) <= Tolerance,
             qPrintable(
                     QStringLiteral("heard %1 s, expected about %2 s").arg(seconds).arg(expected)));
}

void tst_SpeechVoice::messages_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("message");

    const QString folder = m_dir.filePath(QStringLiteral("prompts"));
    QDir().mkpath(folder);
    const QString text = m_dir.filePath(QStringLiteral("notes.wav"));
    QFile file(text);
    if (file.open(QIODevice::WriteOnly))
        file.write("These are notes about the billing prompts, not a recording.\n");
    file.close();

    QTest::newRow("missing-file-reported")
            << m_dir.filePath(QStringLiteral("missing.wav")) << QStringLiteral("File Not Found ");
    QTest::newRow("folder-without-slash-is-no-file") << folder << QStringLiteral("File Not Found ");
    QTest::newRow("text-file-named-wav-refused")
            << text << QStringLiteral("1 Format not recognised.");
    QTest::newRow("folder-with-slash-passed-over") << folder + QLatin1Char('/') << QString();
}

void tst_SpeechVoice::messages()
{
    QFETCH(QString, path);
    QFETCH(QString, message);
    MessageRecorder messages;
    ivr::PlayWaveFile(path);
    QVERIFY(!SpeechVoice::instance().isPending());
    if (message.isEmpty()) {
        QCOMPARE(messages.count(), 0);
        return;
    }
    QCOMPARE(messages.count(), 1);
    QCOMPARE(messages.lastText(), message);
    QCOMPARE(messages.messages().first().icon, QMessageBox::Critical);
}

void tst_SpeechVoice::noVoiceSaysSo()
{
    MessageRecorder messages;
    SpeechVoice::setNoVoicesForTesting(true);
    const auto restore = qScopeGuard([] { SpeechVoice::setNoVoicesForTesting(false); });
    QVERIFY(!ivr::SpeakText(ShortText));
    QCOMPARE(messages.count(), 1);
    QCOMPARE(messages.lastText(), QStringLiteral("No TTS Voice Found"));
    QCOMPARE(messages.messages().first().icon, QMessageBox::Critical);
    QVERIFY(!SpeechVoice::instance().isPending());
}

QTEST_MAIN(tst_SpeechVoice)
#include "tst_speechvoice.moc"
