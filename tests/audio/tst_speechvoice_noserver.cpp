#include "audition.h"
#include "messagerecorder.h"
#include "speechvoice.h"

#include <QtTest>

using ivr::SpeechVoice;

// A machine with no sound server: the default output is a null device. The
// calls still return, say nothing and keep nothing queued.
class tst_SpeechVoiceNoServer : public QObject
{
    Q_OBJECT

private slots:
    void playsNothingAndSaysNothing_data();
    void playsNothingAndSaysNothing();
};

void tst_SpeechVoiceNoServer::playsNothingAndSaysNothing_data()
{
    QTest::addColumn<bool>("speak");
    QTest::addColumn<QString>("what");
    QTest::newRow("speech-without-device-returns")
            << true << QStringLiteral("Press one for billing.");
    QTest::newRow("wave-without-device-returns")
            << false << QStringLiteral("/usr/share/asterisk/sounds/en_US_f_Allison/vm-goodbye.wav");
}

void tst_SpeechVoiceNoServer::playsNothingAndSaysNothing()
{
    QFETCH(bool, speak);
    QFETCH(QString, what);
    MessageRecorder messages;
    for (int press = 0; press < 3; ++press) {
        if (speak)
            QVERIFY(ivr::SpeakText(what));
        else
            ivr::PlayWaveFile(what);
    }
    QCOMPARE(messages.count(), 0);
    QVERIFY(!SpeechVoice::instance().isPending());
}

QTEST_MAIN(tst_SpeechVoiceNoServer)
#include "tst_speechvoice_noserver.moc"
