#include "audition.h"
#include "messagerecorder.h"
#include "pulsedaemon.h"
#include "sinkrecorder.h"
#include "speechvoice.h"

#include <QtTest>

// The sound server hangs just as the program first looks for it. The Play
// button comes back with its answer while the server still hangs, and the
// prompt sounds once the server answers again.
class tst_SpeechVoiceHungServer : public QObject
{
    Q_OBJECT

private slots:
    void auditionWaitsOffTheCallersThread()
    {
        const QString wave
                = QStringLiteral("/usr/share/asterisk/sounds/en_US_f_Allison/agent-pass.wav");
        SinkRecorder recorder;
        QVERIFY2(recorder.start(), "run through ctest: needs the test daemon");
        QVERIFY(PulseDaemon::freeze());
        auto thaw = qScopeGuard([] { PulseDaemon::thaw(); });
        MessageRecorder messages;
        QVERIFY(ivr::SpeakText("Press one for billing."));
        ivr::PlayWaveFile(wave);
        QCOMPARE(messages.count(), 0);
        thaw.dismiss();
        QVERIFY(PulseDaemon::thaw());
        QVERIFY(QTest::qWaitFor([] { return !ivr::SpeechVoice::instance().isPending(); }, 60000));
        QTest::qWait(700);
        const double heard = SinkRecorder::soundingSeconds(recorder.stop());
        const double waveSeconds = SinkRecorder::soundingSeconds(SinkRecorder::soxPhonePcm(wave));
        QVERIFY2(heard >= waveSeconds + 0.5, qPrintable(QStringLiteral("heard %1 s").arg(heard)));
    }
};

QTEST_MAIN(tst_SpeechVoiceHungServer)
#include "tst_speechvoice_hungserver.moc"
