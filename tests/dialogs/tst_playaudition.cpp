#include "dialogtesting.h"
#include "messagerecorder.h"
#include "programfolder.h"
#include "sinkrecorder.h"
#include "speechvoice.h"

#include <QtTest>

using namespace dialogtesting;

// The Play button of a dialog, heard through the test daemon's null sink.
class tst_PlayAudition : public QObject
{
    Q_OBJECT

private slots:
    void playSoundsWhatTheBoxesHold_data();
    void playSoundsWhatTheBoxesHold();
};

void tst_PlayAudition::playSoundsWhatTheBoxesHold_data()
{
    QTest::addColumn<bool>("spoken");
    QTest::addColumn<QString>("wave");
    QTest::addColumn<QString>("said");
    const QString beep = "/usr/share/asterisk/sounds/en_US_f_Allison/beep.wav";
    QTest::newRow("speaks-the-text") << true << QString() << QString();
    QTest::newRow("plays-the-wave-trimmed") << false << "  " + beep + " " << QString();
    QTest::newRow("missing-wave-said") << false << "/no/such.wav"
                                       << "File Not Found ";
}

void tst_PlayAudition::playSoundsWhatTheBoxesHold()
{
    QFETCH(bool, spoken);
    QFETCH(QString, wave);
    QFETCH(QString, said);
    QVERIFY2(qEnvironmentVariableIsSet("PULSE_SERVER"), "run through ctest: needs the test daemon");
    ProgramFolder folder;
    MessageRecorder messages;
    frmScriptViewer w;
    w.AddModule(3, 3000, 3000);
    ivr::Definition &d = module(w, 2)->moduleData()->definition();
    d.setisTextMsg(spoken);
    d.setTextToPlay(QStringLiteral("Press one for billing."));
    d.setFileName(wave);
    ivr::PropertyDialog *dialog = open(w, 2);

    SinkRecorder recorder;
    QVERIFY(recorder.start());
    click(dialog, "cmdPlay");
    QVERIFY(QTest::qWaitFor([] { return !ivr::SpeechVoice::instance().isPending(); }, 20000));
    QTest::qWait(700);
    const QByteArray heard = recorder.stop();
    QCOMPARE(messages.lastText(), said);
    QCOMPARE(SinkRecorder::soundingSeconds(heard) > 0.1, said.isEmpty());
    QVERIFY(dialog->isVisible()); // Play ends nothing and edits nothing
    QVERIFY(!dialog->Edited());
    click(dialog, "cmdCancel");
}

QTEST_MAIN(tst_PlayAudition)
#include "tst_playaudition.moc"
