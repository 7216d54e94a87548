#include "dialogtesting.h"
#include "exittables.h"

#include <QLabel>
#include <QRegularExpression>

using namespace dialogtesting;

namespace {

// One field of a module's dialog: what it shows of the stored value, and
// what it writes of the typed one. nullptr: never stored, left as loaded,
// shown as stored or written as typed.
struct Field
{
    qint16 type;
    const char *control, *key, *stored, *shown, *typed, *written;
};

// How a dialog is drawn.
struct Layout
{
    qint16 type;  // Connected 1 and End Call 0 are the script's own
    QSize client; // empty when only fixed
    int help;
    QString tabOrder; // names split by blanks
    QString captions; // name=text, split by "|"
};

} // namespace

Q_DECLARE_METATYPE(Field)
Q_DECLARE_METATYPE(Layout)

// Every module's dialog in a real script window, one table row per dialog or
// field: layout, fields, edit marks and exits.
class tst_ModuleDialogs : public QObject, private Fixture
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(setUp()); }
    void cleanup() { tearDown(); }
    void layoutAsDrawn_data();
    void layoutAsDrawn();
    void fieldsLoadAndCommit_data();
    void fieldsLoadAndCommit();
    void marksEdited_data();
    void marksEdited();
    void exitRows_data();
    void exitRows();
};

void tst_ModuleDialogs::layoutAsDrawn_data()
{
    QTest::addColumn<Layout>("l");
    const QString prompt = "txtModuleName optTTS_0 optTTS_1 txtWaveFile cmdBrowse ";
    QString flows;
    for (int j = 0; j < 13; ++j)
        flows += QStringLiteral("cboFlow_%1 ").arg(j);
    // One dialog to a paragraph: its tab order, then its captions.
    // clang-format off
    QTest::newRow("play") << Layout{3, {371, 347}, 3,
        prompt + "txtTTS txtReplayCount txtPauseBetn cboNext cmdOk cmdCancel cmdPlay",
        "optTTS_0=Text To Speech|optTTS_1=Wave File|lblWaveFile=Sound File|lblTTS=Text To Speech|"
        "cmdBrowse=...|cmdPlay=&Play|Label2=Replay Count|Label2_1=Pause between replay|"
        "Label2_2=Sec|Label1=On complete goto|cmdOk=&Ok|cmdCancel=&Cancel"};
    QTest::newRow("connect") << Layout{1, {307, 74}, 2, "cboCurrModule cmdOk cmdCancel",
        "Label1=On connect goto|cmdOk=&Ok|cmdCancel=&Cancel"};
    QTest::newRow("end") << Layout{0, {370, 212}, 12,
        "optTTS_0 optTTS_1 txtWaveFile cmdBrowse cmdPlay txtTTS cmdOk cmdCancel",
        "optTTS_0=Text To Speech|cmdOk=&Ok"};
    QTest::newRow("condition") << Layout{13, {}, 9,
        "txtModuleName txtCondition cboSuccess cboFail cmdOk cmdCancel",
        "lblFlow_0=Condition|lblFlow_1=On Success goto|lblFlow_2=On Fail goto|cmdOk=&Ok"};
    QTest::newRow("email") << Layout{9, {}, 10,
        "txtModuleName txtFrom txtTo txtSubject txtAttachment cmdBrowse txtMessage cboSuccess "
        "cboFail cmdOk cmdCancel",
        "lblFlow_0=From|lblFlow_1=To|lblFlow_2=Subject|lblFlow_3=Attachment|lblFlow_4=Message|"
        "lblFlow_5=On Success goto|lblFlow_6=On Fail goto|cmdBrowse=...|cmdCancel=&Cancel"};
    QTest::newRow("query") << Layout{8, {}, 8,
        "txtModuleName txtConString cmdBrowse txtQuery cboSuccess cboNoRecord cboFail cmdOk "
        "cmdCancel",
        "lbConString=Connection String|lblQuery=Query|Label1=On Success goto|"
        "lblOnNoRecord=On No Record goto|lblFail=On Fail goto|cmdBrowse=..."};
    QTest::newRow("executable") << Layout{11, {}, 11,
        "txtModuleName TxtFileName cmdBrowse txtArguments cboRunMode cboSuccess cboFail cmdOk "
        "cmdCancel",
        "lblFileName=File Name|lblCmdLineArgu=Arguments|LblRunMode=Run Mode|Label1=On Success|"
        "Label2=On Fail|cmdBrowse=..."};
    QTest::newRow("digit") << Layout{4, {386, 369}, 4,
        prompt + "txtTTS chkPlayBeep txtTimeOut " + flows + "cmdOk cmdCancel cmdPlay",
        "chkPlayBeep=Play Beep After message|Label2=Time out|Label2_1=sec|cmdPlay=&Play"};
    QTest::newRow("number") << Layout{5, {386, 332}, 5,
        prompt + "txtTTS chkPlayBeep txtPreDefBuffer txtMinDigits txtMaxDigits txtTimeOut "
        "cboSuccess cboTimeout cmdOk cmdCancel cmdPlay",
        "Label4=Predefined Number|Label3=Number length must be >=|Label3_1=digits|"
        "Label1=Number length must be <=|Label1_1=digits|Label2=Time out|Label2_1=sec"};
    QTest::newRow("record") << Layout{7, {370, 350}, 7,
        prompt + "txtTTS chkPlayBeep txtRecordLen cboNext cmdOk cmdCancel chkStopRecordOnDigit "
        "cmdPlay",
        "Label2=Max Recording Time  :|Label2_1=Sec|chkPlayBeep=Play Beep After message|"
        "chkStopRecordOnDigit=Stop recording on digit press"};
    QTest::newRow("transfer") << Layout{6, {370, 297}, 6,
        prompt + "cmdPlay txtTTS txtExtNo cmdOk cmdCancel",
        "Label1=Extension number|lblWaveFile=Sound File|cmdBrowse=..."};
    // clang-format on
}

void tst_ModuleDialogs::layoutAsDrawn()
{
    QFETCH(Layout, l);
    frmScriptViewer w;
    addModules(w, l.type > 1 ? l.type : 3);
    ivr::PropertyDialog *dialog = open(w, l.type == 1 ? 0 : l.type == 0 ? 1 : 2);
    QCOMPARE(dialog->helpContext(), l.help);
    QCOMPARE(dialog->minimumSize(), dialog->maximumSize());
    if (l.client.isValid())
        QCOMPARE(dialog->size(), l.client);
    QVERIFY(!(dialog->windowFlags()
              & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint
                 | Qt::WindowCloseButtonHint)));
    // Qt keeps only the checked option of a group in the chain's tab stops;
    // the chain itself is the order drawn.
    const QStringList order = l.tabOrder.split(' ');
    QCOMPARE(dialogtesting::tabOrder(dialog, order), order);
    QCOMPARE(captions(dialog, pairs(l.captions)), pairs(l.captions));
    for (QPushButton *button : dialog->findChildren<QPushButton *>())
        QVERIFY(!button->isDefault() && !button->autoDefault());
    for (QComboBox *combo : dialog->findChildren<QComboBox *>())
        QVERIFY(!combo->isEditable());
    for (QPlainTextEdit *box :
         dialog->findChildren<QPlainTextEdit *>()) // only the condition scrolls
        QCOMPARE(box->verticalScrollBarPolicy() == Qt::ScrollBarAlwaysOn, l.type == 13);
    const QRegularExpression wideBlank(QStringLiteral("\\S {3,}\\S"));
    for (QLabel *label : dialog->findChildren<QLabel *>())
        QVERIFY2(!wideBlank.match(label->text()).hasMatch(), qPrintable(label->text()));
    click(dialog, "cmdCancel");
}

void tst_ModuleDialogs::fieldsLoadAndCommit_data()
{
    QTest::addColumn<Field>("f");
    const auto field = [](const char *fault, Field f) {
        QTest::newRow(fault) << f;
    };
    field("play-text-trimmed", {3, "txtTTS", "TextToPlay", "Hi", {}, " Welcome ", {}});
    field("play-wave-lost", {3, "txtWaveFile", "FileName", "/a.wav", {}, "/b.wav", {}});
    field("play-replays-lost", {3, "txtReplayCount", "ReplayCount", "4", {}, "2", {}});
    field("play-pause-lost", {3, "txtPauseBetn", "PauseBetn", "7", {}, "3", {}});
    field("play-option-lost", {3, "optTTS_0", "isTextMsg", "false", {}, "true", {}});
    // A spoken prompt keeps the wave file it does not use.
    field("play-unused-wave-dropped", {3, "optTTS_0", "FileName", "/a", "true", "true", "/a"});
    field("play-pause-above-range-clipped", {3, "txtPauseBetn", "PauseBetn", "75", {}, {}, "75"});
    field("condition-lines-lost", {13, "txtCondition", "Condition", "a\nb", {}, "x\n", {}});
    field("condition-empty-refused", {13, "txtCondition", "Condition", "old", {}, "", {}});
    field("email-to-swapped", {9, "txtTo", "SendTo", "t@x", {}, " u@x ", {}});
    field("email-empty-refused", {9, "txtTo", "SendTo", "t@x", {}, "", {}});
    field("email-from-swapped", {9, "txtFrom", "MailFrom", "f@x", {}, "g@x", {}});
    field("email-subject-lost", {9, "txtSubject", "Subject", "S", {}, "T", {}});
    field("email-attachment-trimmed", {9, "txtAttachment", "Attachment", "/a", {}, " /b", {}});
    field("email-message-lines-lost", {9, "txtMessage", "Message", "M", {}, "Hi\nyou", {}});
    field("query-connection-swapped", {8, "txtConString", "ConnectionString", "C", {}, "D", {}});
    field("query-text-swapped", {8, "txtQuery", "QueryString", "Q", {}, "select 1", {}});
    field("program-file-swapped", {11, "TxtFileName", "FileName", "/bin/a", {}, "/e", {}});
    field("program-arguments-trimmed", {11, "txtArguments", "CommandLine", "-x", {}, " a", {}});
    field("program-mode-swapped", {11, "cboRunMode", "RunMode", "1", "1-Normal", "0-Silent", "0"});
    field("program-new-is-silent", {11, "cboRunMode", "RunMode", {}, "0-Silent", "1-Normal", "1"});
    field("program-no-mode-not-zero", {11, "cboRunMode", "RunMode", "5", "", {}, "0"});
    field("stale-exit-selected", {13, "cboFail", "OnFail", "[Gone]", "", {}, ""});
    field("cleared-exit-kept", {8, "cboNoRecord", "OnNoRecord", "[End Call]", "End Call", "", {}});
    field("digit-beep-lost", {4, "chkPlayBeep", "PlayBeep", "true", {}, "false", {}});
    field("digit-timeout-lost", {4, "txtTimeOut", "TimeOut", "7", {}, "12", {}});
    field("digit-timeout-above-range-clipped", {4, "txtTimeOut", "TimeOut", "90", {}, {}, "90"});
    field("number-beep-lost", {5, "chkPlayBeep", "PlayBeep", "false", {}, "true", {}});
    field("number-least-lost", {5, "txtMinDigits", "MinLength", "3", {}, "2", {}});
    field("number-greatest-lost", {5, "txtMaxDigits", "MaxLength", "8", {}, "9", {}});
    field("number-most-above-range-clipped", {5, "txtMaxDigits", "MaxLength", "75", {}, {}, "75"});
    field("number-timeout-lost", {5, "txtTimeOut", "TimeOut", "10", {}, "11", {}});
    field("number-timeout-fraction-rounded", {5, "txtTimeOut", "TimeOut", "2.5", {}, {}, "2.5"});
    field("number-preset-untrimmed", {5, "txtPreDefBuffer", "PreDefBuffer", "5", {}, " 1 ", "1"});
    field("number-prompt-trimmed", {5, "txtTTS", "TextToPlay", "", {}, " Number ", {}});
    field("record-beep-lost", {7, "chkPlayBeep", "PlayBeep", "true", {}, "false", {}});
    field("record-stop-lost", {7, "chkStopRecordOnDigit", "StopOnDigit", "false", {}, "true", {}});
    field("record-length-lost", {7, "txtRecordLen", "RecordLen", "45", {}, "20", {}});
    field("record-length-below-range-raised", {7, "txtRecordLen", "RecordLen", "0", {}, {}, "0"});
    field("extension-trimmed", {6, "txtExtNo", "DefaultExt", "200", {}, " 20a ", {}});
}

// Shows the stored value, keeps it through an OK without an edit, and writes
// what was typed once the name made the dialog edited.
void tst_ModuleDialogs::fieldsLoadAndCommit()
{
    QFETCH(Field, f);
    const QString key = f.key;
    frmScriptViewer w;
    addModules(w, f.type);
    if (f.stored)
        definitionOf(w, 2).setValue(key, QString(f.stored));
    const QJsonObject before = definitionOf(w, 2).storedValues();
    ivr::PropertyDialog *dialog = open(w, 2);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("2"));
    QCOMPARE(shownIn(dialog, f.control), QString(f.shown ? f.shown : f.stored));
    click(dialog, "cmdOk"); // what the load set is no edit
    QVERIFY(!w.Changed());
    QCOMPARE(definitionOf(w, 2).storedValues(), before);
    dialog = open(w, 2);
    if (f.typed)
        enter(dialog, f.control, f.typed);
    enter(dialog, "txtModuleName", QStringLiteral(" Step "));
    click(dialog, "cmdOk");
    QCOMPARE(m_messages->count(), 0);
    QVERIFY(w.Changed());
    QCOMPARE(module(w, 2)->moduleData()->Name(), QStringLiteral(" Step "));
    QCOMPARE(definitionOf(w, 2).value(key).toString(), QString(f.written ? f.written : f.typed));
}

void tst_ModuleDialogs::marksEdited_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<QString>("field");
    QTest::addColumn<bool>("edited");
    // "!" before a control: its change alone is no edit and is lost. Over an
    // empty box a cancelled choice changes no text: only the transfer's own
    // mark makes it an edit.
    const QList<std::pair<qint16, const char *>> dialogs{
            {3, "txtModuleName txtTTS txtWaveFile txtReplayCount txtPauseBetn cboNext optTTS_1"},
            {13, "txtModuleName txtCondition cboSuccess cboFail"},
            {9, "txtTo txtFrom txtSubject txtAttachment txtMessage cboSuccess cboFail"},
            {8, "txtConString txtQuery cboSuccess cboFail cboNoRecord"},
            {11, "TxtFileName txtArguments cboRunMode cboSuccess cboFail"},
            {4, "txtTimeOut chkPlayBeep cboFlow_12 !tabPages"},
            {5, "txtMinDigits txtMaxDigits cboTimeout !txtPreDefBuffer !tabPages"},
            {7, "chkStopRecordOnDigit txtRecordLen chkPlayBeep !cmdBrowse"},
            {6, "txtModuleName !txtExtNo cmdBrowse"},
    };
    for (const auto &[type, fields] : dialogs) {
        for (QString field : QString(fields).split(' ')) {
            const bool edited = !field.startsWith('!');
            field.remove('!');
            QTest::addRow("%d-%s-%s", type, qPrintable(field), edited ? "unmarked" : "counted")
                    << type << field << edited;
        }
    }
}

void tst_ModuleDialogs::marksEdited()
{
    QFETCH(qint16, type);
    QFETCH(QString, field);
    QFETCH(bool, edited);
    ivr::CommonDialog::setTestAnswer([](auto &, auto) { return std::nullopt; });
    frmScriptViewer w;
    addModules(w, type);
    ivr::Definition &d = definitionOf(w, 2);
    d.setisTextMsg(field != "cmdBrowse"); // the file box and its button are enabled
    const QJsonObject before = d.storedValues();
    ivr::PropertyDialog *dialog = open(w, 2);
    QSignalSpy completed(dialog, &ivr::PropertyDialog::CompleteEdit);
    edit(control(dialog, qPrintable(field)));
    click(dialog, "cmdOk");
    QCOMPARE(completed.count(), 1);
    QCOMPARE(completed.first().at(1).toBool(), edited);
    QCOMPARE(w.Changed(), edited);
    if (!edited) // the typing is lost
        QCOMPARE(d.storedValues(), before);
}

void tst_ModuleDialogs::exitRows_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<QString>("combo");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("label"); // name=caption of the row's label, "" unchecked
    QTest::addColumn<int>("top");       // the combo's top in pixels, -1 unchecked
    const auto exit = [](qint16 type, QString combo, QString key, QString label, int twips) {
        QTest::addRow("%d-%s-writes-%s", type, qPrintable(combo), qPrintable(key))
                << type << combo << key << label << twips / 15;
    };
    const QStringList keys{"OnStar", "OnHash", "OnTimeOut"};
    const QStringList captions{"On * button", "On # button", "On Timeout goto"};
    for (int j = 0; j < 13; ++j) {
        const bool digit = j < 10;
        // Rows 12 and 13 leave the step of 330.
        exit(4,
             QStringLiteral("cboFlow_%1").arg(j),
             digit ? QStringLiteral("OnDigit%1").arg(j) : keys.at(j - 10),
             QStringLiteral("lblFlow_%1=").arg(j)
                     + (digit ? QStringLiteral("On Digit %1 goto").arg(j) : captions.at(j - 10)),
             j < 11 ? 90 + 330 * j : (j == 11 ? 3735 : 4065));
    }
    exit(5, "cboSuccess", "OnSuccess", "lblFlow_0=On Success goto", 135);
    exit(5, "cboTimeout", "OnTimeOut", "lblFlow_1=On Timeout goto", 465);
    exit(7, "cboNext", "OnFinish", "Label1=On complete goto", 720);
    exit(3, "cboNext", "NextModule", "", -15);
    for (const qint16 type : {13, 9, 8, 11}) {
        exit(type, "cboSuccess", "OnSuccess", "", -15);
        exit(type, "cboFail", "OnFail", "", -15);
    }
    exit(8, "cboNoRecord", "OnNoRecord", "", -15);
}

// The combo shows its own exit alone, and writes it alone with an arrow to
// the new target and none to the old.
void tst_ModuleDialogs::exitRows()
{
    QFETCH(qint16, type);
    QFETCH(QString, combo);
    QFETCH(QString, key);
    QFETCH(QString, label);
    QFETCH(int, top);
    frmScriptViewer w;
    addModules(w, type);
    definitionOf(w, 2).Properties(key).setValue(QStringLiteral("[3]"));
    ivr::PropertyDialog *dialog = open(w, 2);
    auto *box = control<QComboBox>(dialog, qPrintable(combo));
    QCOMPARE(box->currentText(), QStringLiteral("3"));
    QCOMPARE(box->count(), 4); // End Call, 2, 3, 4: never Connected
    for (QComboBox *other : dialog->findChildren<QComboBox *>()) {
        if (other != box && other->objectName() != "cboRunMode")
            QCOMPARE(other->currentIndex(), -1);
    }
    if (top >= 0) {
        QCOMPARE(box->y(), top);
        auto *caption = control<QLabel>(dialog, qPrintable(label.section('=', 0, 0)));
        QCOMPARE(caption->text(), label.section('=', 1));
        QCOMPARE(caption->y(), top + 3); // 45 below its combo
    }
    enter(dialog, combo, QStringLiteral("4"));
    click(dialog, "cmdOk");
    for (const QString &exit : ivr::ExitTables::keys(type, ivr::ExitWalk::DialogWrites))
        QCOMPARE(definitionOf(w, 2).value(exit).toString(),
                 exit == key ? QStringLiteral("[4]") : QString());
    QCOMPARE(w.DrawLine().LineMatrix(2, 3), qint16(0));
    QVERIFY(w.DrawLine().LineMatrix(2, 4) > 0);
}

QTEST_MAIN(tst_ModuleDialogs)
#include "tst_moduledialogs.moc"
