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

// Select Wave Files: the script's spoken-number table and its odd edit rules;
// what it and a module's Play button sound through the test daemon's null
// sink.
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
    void fillsAndPlays();
    void playDialogSounds_data();
    void playDialogSounds();

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
    // Each row's box, combo and browse button.
    const QHash<QString, QStringList> rows{
            {"number", {"txtWaveFile", "cboNumber", "cmdBrowse"}},
            {"month", {"txtMonthFile", "cboMonth", "cmdBrowseMonth"}},
            {"beep", {"txtBeepFile", "", "cmdBrowseBeep"}}};
    for (const QString &action : actions) {
        const QString verb = action.section(':', 0, 0), arg = action.section(':', 1);
        const QStringList row = rows.value(verb.section('-', -1));
        if (verb == "number" || verb == "month") {
            enter(dialog, row[1], arg);
        } else if (verb.startsWith("type-")) {
            enter(dialog, row[0], arg);
        } else if (verb.startsWith("browse-")) {
            answerPicker(arg.isEmpty() ? std::nullopt : std::optional(arg));
            control<QPushButton>(dialog, qPrintable(row[2]))->click();
        } else if (verb == "click-month") {
            QTest::mouseClick(control(dialog, "txtMonthFile"), Qt::LeftButton);
        } else { // the wave table goes only when its modal loop ends
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
        numbers = items(cboNumber);
        months = items(cboMonth);
        selected = cboNumber->currentIndex() + cboMonth->currentIndex();
        beep = control<QLineEdit>(dialog, "txtBeepFile")->text();
        QVERIFY(control<QLineEdit>(dialog, "txtWaveFile")->text().isEmpty());
        QVERIFY(control<QLineEdit>(dialog, "txtMonthFile")->text().isEmpty());
    }));
    QCOMPARE(title, QStringLiteral("Select Wave Files"));
    QVERIFY(modal);
    QVERIFY(!enabled);
    QVERIFY(w->isEnabled());
    QStringList names;
    for (int i = 0; i <= 20; ++i)
        names << QStringLiteral("Number %1").arg(i);
    for (int tens = 30; tens <= 90; tens += 10)
        names << QStringLiteral("Number %1").arg(tens);
    QCOMPARE(numbers,
             names << "Hundred"
                   << "Thousand"
                   << "Million"
                   << "Billion");
    names.clear();
    for (int i = 1; i <= 12; ++i)
        names << QStringLiteral("Month %1").arg(i);
    QCOMPARE(months, names);
    QCOMPARE(selected, -2);
    QCOMPARE(beep, ivr::AppFolder::path() + QStringLiteral("/Greeting/beep.wav"));
}

void tst_WaveFile::slotShowsItsEntry_data()
{
    QTest::addColumn<QString>("choice");
    QTest::addColumn<QString>("shown");
    row("number-0-is-slot-0", "number:Number 0", "/n/0.wav");
    row("number-20-is-slot-20", "number:Number 20", "/n/20.wav");
    row("number-30-is-slot-21", "number:Number 30", "/n/21.wav");
    row("hundred-is-slot-28", "number:Hundred", "/n/28.wav");
    row("billion-is-slot-31", "number:Billion", "/n/31.wav");
    row("month-1-is-slot-0", "month:Month 1", "/m/0.wav");
    row("month-12-is-slot-11", "month:Month 12", "/m/11.wav");
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
    QTest::addColumn<QString>("actions"); // split by ","
    QTest::addColumn<QString>("changes"); // "slot=path|...", months after the 32 numbers, beep 44
    QTest::addColumn<bool>("edited");
    row("typed-paths-lost-without-browse",
        "number:Number 5,type-number:/5,month:Month 2,type-month:/m2,click-month,type-beep:/b,ok",
        "",
        false);
    row("typed-number-written-after-any-browse",
        "number:Number 5,type-number:/5,browse-beep:/b,ok",
        "5=/5|44=/b",
        true);
    row("number-browse-fills-its-slot", "number:Hundred,browse-number:/100,ok", "28=/100", true);
    row("number-browse-cancel-empties-slot", "number:Number 7,browse-number:,ok", "7=", true);
    row("browse-without-slot-stores-nothing",
        "browse-number:/x,browse-month:/y,click-month,ok",
        "",
        true);
    row("month-browse-lost-without-click", "month:Month 3,browse-month:/m3,ok", "", true);
    row("month-browse-kept-after-click",
        "month:Month 3,browse-month:/m3,click-month,ok",
        "34=/m3",
        true);
    row("other-month-first-discards-browse",
        "month:Month 3,browse-month:/m3,month:Month 4,click-month,ok",
        "",
        true);
    row("month-cancel-then-typed-kept-on-click",
        "month:Month 1,browse-month:,type-month: /m1,click-month,ok",
        "32= /m1",
        true);
    row("beep-written-trimmed", "type-beep:  /b ,browse-number:,ok", "44=/b", true);
    row("beep-cancel-takes-pickers-last-name", "browse-number:/x,browse-beep:,ok", "44=/x", true);
    row("cancel-writes-nothing", "number:Number 1,browse-number:/1,cancel", "", false);
}

void tst_WaveFile::editsReachTheTable()
{
    QFETCH(QString, actions);
    QFETCH(QString, changes);
    QFETCH(bool, edited);
    for (int i = 0; i < ivr::Definition::FileNameSlots; ++i)
        common().setFileName(i, QStringLiteral("/old/n%1.wav").arg(i));
    for (int i = 0; i < ivr::Definition::MonthFileSlots; ++i)
        common().setMonthFile(i, QStringLiteral("/old/m%1.wav").arg(i));
    common().setBeepFileName(QStringLiteral("/old/beep.wav"));
    QStringList expected = tableOf(common());
    for (const QString &change : pairs(changes))
        expected[change.section('=', 0, 0).toInt()] = change.section('=', 1);
    QList<bool> completed;
    QVERIFY(withWaveFiles([&](ivr::PropertyDialog *dialog) {
        connect(dialog, &ivr::PropertyDialog::CompleteEdit, [&](qint16, bool e) {
            completed << e;
        });
        work(dialog, actions.split(','));
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

void tst_WaveFile::fillsAndPlays()
{
    QVERIFY2(qEnvironmentVariableIsSet("PULSE_SERVER"), "run through ctest: needs the test daemon");
    const QStringList numbers = numberPrompts();
    QStringList months;
    for (int i = 0; i < 12; ++i)
        months << Sounds + QStringLiteral("digits/mon-%1.wav").arg(i);
    const QString beep = Sounds + QStringLiteral("beep.wav");
    for (const QString &file : numbers + months + QStringList{beep})
        QVERIFY2(QFileInfo::exists(file), qPrintable(file));

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
    QCOMPARE(tableOf(common()), numbers + months + QStringList{beep});
}

void tst_WaveFile::playDialogSounds_data()
{
    QTest::addColumn<bool>("spoken");
    QTest::addColumn<QString>("wave");
    QTest::addColumn<QString>("said");
    row("speaks-the-text", true, "", "");
    row("plays-the-wave-trimmed", false, qPrintable("  " + Sounds + "beep.wav "), "");
    row("missing-wave-said", false, "/no/such.wav", "File Not Found ");
}

// The Play button of a module's dialog sounds what its boxes hold, and ends
// and edits nothing.
void tst_WaveFile::playDialogSounds()
{
    QFETCH(bool, spoken);
    QFETCH(QString, wave);
    QFETCH(QString, said);
    QVERIFY2(qEnvironmentVariableIsSet("PULSE_SERVER"), "run through ctest: needs the test daemon");
    frmScriptViewer *w = activeViewer();
    w->AddModule(3, 3000, 3000);
    ivr::Definition &d = module(*w, 2)->moduleData()->definition();
    d.setisTextMsg(spoken);
    d.setTextToPlay(QStringLiteral("Press one for billing."));
    d.setFileName(wave);
    ivr::PropertyDialog *dialog = open(*w, 2);
    QCOMPARE(heard(dialog, "cmdPlay"), said.isEmpty());
    QCOMPARE(m_messages->lastText(), said);
    QVERIFY(dialog->isVisible());
    QVERIFY(!dialog->Edited());
    click(dialog, "cmdCancel");
}

QTEST_MAIN(tst_WaveFile)
#include "tst_wavefile.moc"
