#include "audition.h"
#include "messagerecorder.h"
#include "speechvoice.h"

#include <QtTest>

// No sound server: the default output is a null device. The calls still
// return, say nothing and keep nothing queued.
class tst_SpeechVoiceNoServer : public QObject
{
    Q_OBJECT

private slots:
    void noDeviceNeverHangs()
    {
        MessageRecorder messages;
        for (int press = 0; press < 3; ++press) {
            QVERIFY(ivr::SpeakText("Press one for billing."));
            ivr::PlayWaveFile("/usr/share/asterisk/sounds/en_US_f_Allison/vm-goodbye.wav");
        }
        QCOMPARE(messages.count(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(!ivr::SpeechVoice::instance().isPending(), 10000);
    }
};

QTEST_MAIN(tst_SpeechVoiceNoServer)
#include "tst_speechvoice_noserver.moc"
