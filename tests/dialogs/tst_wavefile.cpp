#include "appfolder.h"
#include "scriptleveltesting.h"
#include "shelltesting.h"
#include "sinkrecorder.h"
#include "speechvoice.h"

using namespace dialogtesting;
using namespace scriptlevel;

namespace {

const QString Sounds = QStringLiteral("/usr/share/asterisk/sounds/en_US_f_Allison/");

// The Asterisk prompt for each number slot, in slot order.
QStringList numberPrompts()
{
    QStringList files;
    for (int i = 0; i <= 20; ++i)
        files << Sounds + QStringLiteral("digits/%1.wav").arg(i);
    for (int tens = 30; tens <= 90; tens += 10)
        files << Sounds + QStringLiteral("digits/%1.wav").arg(tens);
    for (const char *word : {"hundred", "thousand", "million", "billion"})
        files << Sounds + QStringLiteral("digits/%1.wav").arg(QLatin1String(word));
    return files;
}

// The table as one list: 32 numbers, 12 months, the beep.
QStringList tableOf(const ivr::Definition &d)
{
    QStringList table;
    for (int i = 0; i < ivr::Definition::FileNameSlots; ++i)
        table << d.FileName(i);
    for (int i = 0; i < ivr::Definition::MonthFileSlots; ++i)
        table << d.MonthFile(i);
    return table << d.BeepFileName();
}

} // namespace

// Select Wave Files: the script's spoken-number table, its odd edit rules,
// audition through the test daemon's null sink, and the round trip through
// a saved script.
class tst_WaveFile : public QObject, private Fixture
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(setUp() && shelltesting::start(*m_folder));
        m_pickerSeen.clear();
    }
    void cleanup()
    {
        shelltesting::discardFrame();
        tearDown();
    }
    void opensModalWithEmptySlots();
    void slotShowsItsEntry_data();
    void slotShowsItsEntry();
    void editsReachTheTable_data();
    void editsReachTheTable();
    void browseAsksThePicker();
    void fillsPlaysSavesAndReopens();

private:
    void answerPicker(std::optional<QString> name)
    {
        ivr::CommonDialog::setTestAnswer([this, name](const ivr::CommonDialog &d,
                                                      ivr::CommonDialog::Mode) {
            m_pickerSeen << d.DialogTitle + '|' + d.Filter + '|' + QString::number(d.FilterIndex)
                                    + '|' + d.FileName + '|' + QString::number(d.Flags, 16);
            return name;
        });
    }
    // "number:Text" and "month:Text" choose a slot; "type-number:path",
    // "type-month:path", "type-beep:path" type; "browse-number:path",
    // "browse-month:path", "browse-beep:path" pick ("...:" alone cancels);
    // "click-month" clicks the month's box.
    void work(QWidget *dialog, const QStringList &actions);
    ivr::Definition &common() { return activeViewer()->CommonModule()->definition(); }
    bool heard(QWidget *dialog, const char *play);

    QStringList m_pickerSeen;
};

void tst_WaveFile::work(QWidget *dialog, const QStringList &actions)
{
    const auto box = [dialog](const QString &which) {
        return control<QLineEdit>(dialog,
                                  which == "number"  ? "txtWaveFile"
                                  : which == "month" ? "txtMonthFile"
                                                     : "txtBeepFile");
    };
    for (const QString &action : actions) {
        const QString verb = action.section(':', 0, 0);
        const QString arg = action.section(':', 1);
        if (verb == "number" || verb == "month") {
            choose(dialog, verb == "number" ? "cboNumber" : "cboMonth", arg);
        } else if (verb.startsWith("type-")) {
            box(verb.mid(5))->setText(arg);
        } else if (verb.startsWith("browse-")) {
            answerPicker(arg.isEmpty() ? std::nullopt : std::optional(arg));
            const QString which = verb.mid(7);
            control<QPushButton>(dialog,
                                 which == "number"  ? "cmdBrowse"
                                 : which == "month" ? "cmdBrowseMonth"
                                                    : "cmdBrowseBeep")
                    ->click();
        } else if (verb == "click-month") {
            QTest::mouseClick(box("month"), Qt::LeftButton);
        } else {
            control<QPushButton>(dialog, verb == "ok" ? "cmdOk" : "cmdCancel")->click();
        }
    }
}

bool tst_WaveFile::heard(QWidget *dialog, const char *play)
{
    SinkRecorder recorder;
    if (!recorder.start())
        return false;
    control<QPushButton>(dialog, play)->click();
    if (!QTest::qWaitFor([] { return !ivr::SpeechVoice::instance().isPending(); }, 20000))
        return false;
    QTest::qWait(700);
    return SinkRecorder::soundingSeconds(recorder.stop()) > 0.1;
}

void tst_WaveFile::opensModalWithEmptySlots()
{
    frmScriptViewer *w = activeViewer();
    QStringList numbers, months;
    QString beep, title;
    int selected = 0;
    bool enabled = true, modal = false;
    QVERIFY(withWaveFiles([&](ivr::PropertyDialog *dialog) {
        title = dialog->windowTitle();
        modal = QApplication::activeModalWidget() == dialog;
        enabled = w->isEnabled();
        auto *cboNumber = control<QComboBox>(dialog, "cboNumber");
        auto *cboMonth = control<QComboBox>(dialog, "cboMonth");
        for (int i = 0; i < cboNumber->count(); ++i)
            numbers << cboNumber->itemText(i);
        for (int i = 0; i < cboMonth->count(); ++i)
            months << cboMonth->itemText(i);
        selected = cboNumber->currentIndex() + cboMonth->currentIndex();
        beep = control<QLineEdit>(dialog, "txtBeepFile")->text();
        QVERIFY(control<QLineEdit>(dialog, "txtWaveFile")->text().isEmpty());
        QVERIFY(control<QLineEdit>(dialog, "txtMonthFile")->text().isEmpty());
    }));
    QCOMPARE(title, QStringLiteral("Select Wave Files"));
    QVERIFY(modal);
    QVERIFY(!enabled);
    QVERIFY(w->isEnabled());
    QCOMPARE(numbers, QStringList({"Number 0",  "Number 1",  "Number 2",  "Number 3",  "Number 4",
                                   "Number 5",  "Number 6",  "Number 7",  "Number 8",  "Number 9",
                                   "Number 10", "Number 11", "Number 12", "Number 13", "Number 14",
                                   "Number 15", "Number 16", "Number 17", "Number 18", "Number 19",
                                   "Number 20", "Number 30", "Number 40", "Number 50", "Number 60",
                                   "Number 70", "Number 80", "Number 90", "Hundred",   "Thousand",
                                   "Million",   "Billion"}));
    QCOMPARE(months,
             QStringList({"Month 1",
                          "Month 2",
                          "Month 3",
                          "Month 4",
                          "Month 5",
                          "Month 6",
                          "Month 7",
                          "Month 8",
                          "Month 9",
                          "Month 10",
                          "Month 11",
                          "Month 12"}));
    QCOMPARE(selected, -2);
    QCOMPARE(beep, ivr::AppFolder::path() + QStringLiteral("/Greeting/beep.wav"));
}

void tst_WaveFile::slotShowsItsEntry_data()
{
    QTest::addColumn<QString>("choice");
    QTest::addColumn<QString>("shown");
    QTest::newRow("number-0-is-slot-0") << "number:Number 0"
                                        << "/n/0.wav";
    QTest::newRow("number-20-is-slot-20") << "number:Number 20"
                                          << "/n/20.wav";
    QTest::newRow("number-30-is-slot-21") << "number:Number 30"
                                          << "/n/21.wav";
    QTest::newRow("hundred-is-slot-28") << "number:Hundred"
                                        << "/n/28.wav";
    QTest::newRow("billion-is-slot-31") << "number:Billion"
                                        << "/n/31.wav";
    QTest::newRow("month-1-is-slot-0") << "month:Month 1"
                                       << "/m/0.wav";
    QTest::newRow("month-12-is-slot-11") << "month:Month 12"
                                         << "/m/11.wav";
}

void tst_WaveFile::slotShowsItsEntry()
{
    QFETCH(QString, choice);
    QFETCH(QString, shown);
    for (int i = 0; i < ivr::Definition::FileNameSlots; ++i)
        common().setFileName(i, QStringLiteral("/n/%1.wav").arg(i));
    for (int i = 0; i < ivr::Definition::MonthFileSlots; ++i)
        common().setMonthFile(i, QStringLiteral("/m/%1.wav").arg(i));
    QString seen;
    QVERIFY(withWaveFiles([&](ivr::PropertyDialog *dialog) {
        work(dialog, {choice});
        seen = control<QLineEdit>(dialog,
                                  choice.startsWith("number") ? "txtWaveFile" : "txtMonthFile")
                       ->text();
        QVERIFY(!dialog->Edited());
    }));
    QCOMPARE(seen, shown);
}

void tst_WaveFile::editsReachTheTable_data()
{
    QTest::addColumn<QStringList>("actions");
    QTest::addColumn<QStringList>("changes"); // "slot=path", months after the 32 numbers, beep 44
    QTest::addColumn<bool>("edited");
    QTest::newRow("typed-paths-lost-without-browse") << QStringList{"number:Number 5",
                                                                    "type-number:/new/5.wav",
                                                                    "month:Month 2",
                                                                    "type-month:/new/m2.wav",
                                                                    "click-month",
                                                                    "type-beep:/new/beep.wav",
                                                                    "ok"}
                                                     << QStringList{} << false;
    QTest::newRow("typed-number-written-after-any-browse")
            << QStringList{"number:Number 5",
                           "type-number:/new/5.wav",
                           "browse-beep:/new/beep.wav",
                           "ok"}
            << QStringList{"5=/new/5.wav", "44=/new/beep.wav"} << true;
    QTest::newRow("number-browse-fills-its-slot")
            << QStringList{"number:Hundred", "browse-number:/new/100.wav", "ok"}
            << QStringList{"28=/new/100.wav"} << true;
    QTest::newRow("number-browse-cancel-empties-slot")
            << QStringList{"number:Number 7", "browse-number:", "ok"} << QStringList{"7="} << true;
    QTest::newRow("browse-without-slot-stores-nothing") << QStringList{"browse-number:/new/x.wav",
                                                                       "browse-month:/new/y.wav",
                                                                       "click-month",
                                                                       "ok"}
                                                        << QStringList{} << true;
    QTest::newRow("month-browse-lost-without-click")
            << QStringList{"month:Month 3", "browse-month:/new/m3.wav", "ok"} << QStringList{}
            << true;
    QTest::newRow("month-browse-kept-after-click")
            << QStringList{"month:Month 3", "browse-month:/new/m3.wav", "click-month", "ok"}
            << QStringList{"34=/new/m3.wav"} << true;
    QTest::newRow("other-month-first-discards-browse") << QStringList{"month:Month 3",
                                                                      "browse-month:/new/m3.wav",
                                                                      "month:Month 4",
                                                                      "click-month",
                                                                      "ok"}
                                                       << QStringList{} << true;
    QTest::newRow("month-cancel-then-typed-kept-on-click")
            << QStringList{"month:Month 1",
                           "browse-month:",
                           "type-month: /typed/m1.wav",
                           "click-month",
                           "ok"}
            << QStringList{"32= /typed/m1.wav"} << true;
    QTest::newRow("beep-written-trimmed")
            << QStringList{"type-beep:  /new/beep.wav ", "browse-number:", "ok"}
            << QStringList{"44=/new/beep.wav"} << true;
    QTest::newRow("beep-cancel-takes-pickers-last-name")
            << QStringList{"browse-number:/new/x.wav", "browse-beep:", "ok"}
            << QStringList{"44=/new/x.wav"} << true;
    QTest::newRow("cancel-writes-nothing")
            << QStringList{"number:Number 1", "browse-number:/new/1.wav", "cancel"} << QStringList{}
            << false;
}

void tst_WaveFile::editsReachTheTable()
{
    QFETCH(QStringList, actions);
    QFETCH(QStringList, changes);
    QFETCH(bool, edited);
    for (int i = 0; i < ivr::Definition::FileNameSlots; ++i)
        common().setFileName(i, QStringLiteral("/old/n%1.wav").arg(i));
    for (int i = 0; i < ivr::Definition::MonthFileSlots; ++i)
        common().setMonthFile(i, QStringLiteral("/old/m%1.wav").arg(i));
    common().setBeepFileName(QStringLiteral("/old/beep.wav"));
    QStringList expected = tableOf(common());
    for (const QString &change : changes)
        expected[change.section('=', 0, 0).toInt()] = change.section('=', 1);
    QList<bool> completed;
    QVERIFY(withWaveFiles([&](ivr::PropertyDialog *dialog) {
        connect(dialog, &ivr::PropertyDialog::CompleteEdit, [&](qint16, bool e) {
            completed << e;
        });
        work(dialog, actions);
    }));
    QCOMPARE(completed, QList<bool>{edited});
    QCOMPARE(tableOf(common()), expected);
    QVERIFY(!activeViewer()->Changed());
}

// Number and month start the shared picker afresh; the beep takes it as the
// last use left it.
void tst_WaveFile::browseAsksThePicker()
{
    ivr::CommonDialog &shared = activeViewer()->commonDialog();
    shared.DialogTitle = QStringLiteral("Save");
    shared.FileName = QStringLiteral("/srv/ivr/main.ivr");
    shared.FilterIndex = 3;
    QVERIFY(withWaveFiles([&](ivr::PropertyDialog *dialog) {
        work(dialog,
             {"browse-beep:/new/beep.wav", "browse-number:/new/n.wav", "browse-month:/new/m.wav"});
    }));
    const QString wav = QStringLiteral("|Wav Files (*.wav)|*.wav|1|");
    QCOMPARE(m_pickerSeen,
             QStringList({"Save" + wav + "/srv/ivr/main.ivr|81000",
                          "Select Wav File" + wav + "|81000",
                          "Select Wav File" + wav + "|81000"}));
}

void tst_WaveFile::fillsPlaysSavesAndReopens()
{
    QVERIFY2(qEnvironmentVariableIsSet("PULSE_SERVER"), "run through ctest: needs the test daemon");
    const QStringList numbers = numberPrompts();
    QStringList months;
    for (int i = 0; i < 12; ++i)
        months << Sounds + QStringLiteral("digits/mon-%1.wav").arg(i);
    const QString beep = Sounds + QStringLiteral("beep.wav");
    for (const QString &file : numbers + months + QStringList{beep})
        QVERIFY2(QFileInfo::exists(file), qPrintable(file));

    frmScriptViewer *w = activeViewer();
    bool numberHeard = false, monthHeard = false;
    QVERIFY(withWaveFiles([&](ivr::PropertyDialog *dialog) {
        // Play takes the box as it stands, trimmed, whatever the slot.
        work(dialog, {"type-number: " + numbers.at(5) + " "});
        numberHeard = heard(dialog, "cmdPlayNumber");
        auto *cboNumber = control<QComboBox>(dialog, "cboNumber");
        for (int i = 0; i < numbers.size(); ++i)
            work(dialog, {"number:" + cboNumber->itemText(i), "browse-number:" + numbers.at(i)});
        for (int i = 0; i < months.size(); ++i)
            work(dialog,
                 {QStringLiteral("month:Month %1").arg(i + 1),
                  "browse-month:" + months.at(i),
                  "click-month"});
        work(dialog, {"browse-beep:" + beep, "number:Number 7", "month:Month 5"});
        monthHeard = heard(dialog, "cmdPlayMonth");
        // A missing file is said.
        work(dialog, {"type-month: /no/such.wav "});
        QVERIFY(!heard(dialog, "cmdPlayMonth"));
        work(dialog, {"ok"});
    }));
    QVERIFY(numberHeard);
    QVERIFY(monthHeard);
    QCOMPARE(m_messages->lastText(), QStringLiteral("File Not Found "));
    const QStringList table = numbers + months + QStringList{beep};
    QCOMPARE(tableOf(common()), table);

    const QString path = m_folder->file("numbers.ivr");
    w->setFileName(path);
    QVERIFY(w->SaveScript(false));
    frmScriptViewer *reopened = frmAppMain::existing()->NewScriptWindow();
    reopened->OpenScript(path);
    QCOMPARE(tableOf(reopened->CommonModule()->definition()), table);
    QCOMPARE(activeViewer(), reopened);
    QStringList shown;
    QVERIFY(withWaveFiles([&](ivr::PropertyDialog *dialog) {
        work(dialog, {"number:Hundred", "month:Month 12"});
        for (const char *box : {"txtWaveFile", "txtMonthFile", "txtBeepFile"})
            shown << control<QLineEdit>(dialog, box)->text();
    }));
    QCOMPARE(shown, QStringList({numbers.at(28), months.at(11), beep}));
}

QTEST_MAIN(tst_WaveFile)
#include "tst_wavefile.moc"
