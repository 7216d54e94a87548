#include "dialogtesting.h"
#include "exittables.h"
#include "spinbox.h"

#include <QLabel>
#include <QPointer>
#include <QRegularExpression>

using namespace dialogtesting;

// Every module's dialog in a real script window, one table row per dialog or
// field: layout, fields, edit marks, exits, the round trip through a file;
// then the rules of single dialogs.
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
    void reopenKeepsModule_data();
    void reopenKeepsModule();
    void promptOptionsEnable();
    void spinArrowsStayInRange();
    void connectDecidesAtOk_data();
    void connectDecidesAtOk();
    void endBrowse_data();
    void endBrowse();
    void endOnlyEnablesWindow();
    void pickerKeepsLastName_data();
    void pickerKeepsLastName();
    void lengthAfterName_data();
    void lengthAfterName();
    void opensOnPlay();

private:
    // Title, filter, name filters, file name, flags and filter index the
    // picker was asked with; it answers m_give, "" cancelling.
    QStringList m_seen;
    QString m_give;
    void answerPicker()
    {
        ivr::CommonDialog::setTestAnswer([this](const ivr::CommonDialog &d, auto) {
            m_seen = QStringList{d.DialogTitle,
                                 d.Filter,
                                 d.nameFilters().join(';'),
                                 d.FileName,
                                 QString::number(d.Flags, 16),
                                 QString::number(d.FilterIndex)};
            return m_give.isEmpty() ? std::nullopt : std::optional<QString>(m_give);
        });
    }
};

void tst_ModuleDialogs::layoutAsDrawn_data()
{
    QTest::addColumn<qint16>("type");    // Connected 1 and End Call 0 are the script's own
    QTest::addColumn<QString>("client"); // "371x347", "" when only fixed
    QTest::addColumn<QString>("help");
    QTest::addColumn<QString>("tabOrder"); // names split by blanks
    QTest::addColumn<QString>("captions"); // name=text, split by "|"
    const char *prompt = "txtModuleName optTTS_0 optTTS_1 txtWaveFile cmdBrowse txtTTS ";
    const QByteArray digitOrder
            = prompt
              + QByteArray("chkPlayBeep txtTimeOut cboFlow_0 cboFlow_1 "
                           "cboFlow_2 cboFlow_3 cboFlow_4 cboFlow_5 cboFlow_6 cboFlow_7 cboFlow_8 "
                           "cboFlow_9 "
                           "cboFlow_10 cboFlow_11 cboFlow_12 cmdOk cmdCancel cmdPlay");
    const QByteArray playOrder
            = prompt + QByteArray("txtReplayCount txtPauseBetn cboNext cmdOk cmdCancel cmdPlay");
    const QByteArray numberOrder
            = prompt
              + QByteArray("chkPlayBeep txtPreDefBuffer txtMinDigits "
                           "txtMaxDigits txtTimeOut cboSuccess cboTimeout cmdOk cmdCancel cmdPlay");
    const QByteArray recordOrder = prompt
                                   + QByteArray("chkPlayBeep txtRecordLen cboNext cmdOk "
                                                "cmdCancel chkStopRecordOnDigit cmdPlay");
    row("play",
        3,
        {"371x347",
         "3",
         playOrder,
         "optTTS_0=Text To Speech|optTTS_1=Wave File|lblWaveFile=Sound File|lblTTS=Text To Speech"
         "|cmdBrowse=...|cmdPlay=&Play|Label2=Replay Count|Label2_1=Pause between replay"
         "|Label2_2=Sec|Label1=On complete goto|cmdOk=&Ok|cmdCancel=&Cancel"});
    row("connect",
        1,
        {"307x74",
         "2",
         "cboCurrModule cmdOk cmdCancel",
         "Label1=On connect goto|cmdOk=&Ok|cmdCancel=&Cancel"});
    row("end",
        0,
        {"370x212",
         "12",
         "optTTS_0 optTTS_1 txtWaveFile cmdBrowse cmdPlay txtTTS cmdOk cmdCancel",
         "optTTS_0=Text To Speech|cmdOk=&Ok"});
    row("condition",
        13,
        {"",
         "9",
         "txtModuleName txtCondition cboSuccess cboFail cmdOk cmdCancel",
         "lblFlow_0=Condition|lblFlow_1=On Success goto|lblFlow_2=On Fail goto|cmdOk=&Ok"});
    row("email",
        9,
        {"",
         "10",
         "txtModuleName txtFrom txtTo txtSubject txtAttachment cmdBrowse txtMessage cboSuccess "
         "cboFail cmdOk cmdCancel",
         "lblFlow_0=From|lblFlow_1=To|lblFlow_2=Subject|lblFlow_3=Attachment|lblFlow_4=Message"
         "|lblFlow_5=On Success goto|lblFlow_6=On Fail goto|cmdBrowse=...|cmdCancel=&Cancel"});
    row("query",
        8,
        {"",
         "8",
         "txtModuleName txtConString cmdBrowse txtQuery cboSuccess cboNoRecord cboFail cmdOk "
         "cmdCancel",
         "lbConString=Connection String|lblQuery=Query|Label1=On Success goto"
         "|lblOnNoRecord=On No Record goto|lblFail=On Fail goto|cmdBrowse=..."});
    row("executable",
        11,
        {"",
         "11",
         "txtModuleName TxtFileName cmdBrowse txtArguments cboRunMode cboSuccess cboFail cmdOk "
         "cmdCancel",
         "lblFileName=File Name|lblCmdLineArgu=Arguments|LblRunMode=Run Mode|Label1=On Success"
         "|Label2=On Fail|cmdBrowse=..."});
    row("digit",
        4,
        {"386x369",
         "4",
         digitOrder,
         "chkPlayBeep=Play Beep After message|Label2=Time out|Label2_1=sec|cmdPlay=&Play"});
    row("number",
        5,
        {"386x332",
         "5",
         numberOrder,
         "Label4=Predefined Number|Label3=Number length must be >=|Label3_1=digits"
         "|Label1=Number length must be <=|Label1_1=digits|Label2=Time out|Label2_1=sec"});
    row("record",
        7,
        {"370x350",
         "7",
         recordOrder,
         "Label2=Max Recording Time  :|Label2_1=Sec"
         "|chkStopRecordOnDigit=Stop recording on digit press|chkPlayBeep=Play Beep After "
         "message"});
    row("transfer",
        6,
        {"370x297",
         "6",
         "txtModuleName optTTS_0 optTTS_1 txtWaveFile cmdBrowse cmdPlay txtTTS txtExtNo cmdOk "
         "cmdCancel",
         "Label1=Extension number|lblWaveFile=Sound File|cmdBrowse=..."});
}

void tst_ModuleDialogs::layoutAsDrawn()
{
    QFETCH(qint16, type);
    QFETCH(QString, client);
    QFETCH(QString, help);
    QFETCH(QString, tabOrder);
    QFETCH(QString, captions);
    frmScriptViewer w;
    addModules(w, type > 1 ? type : 3);
    ivr::PropertyDialog *dialog = open(w, type == 1 ? 0 : type == 0 ? 1 : 2);
    QCOMPARE(QString::number(dialog->helpContext()), help);
    QCOMPARE(dialog->minimumSize(), dialog->maximumSize());
    if (!client.isEmpty())
        QCOMPARE(QStringLiteral("%1x%2").arg(dialog->width()).arg(dialog->height()), client);
    QVERIFY(!(dialog->windowFlags()
              & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint
                 | Qt::WindowCloseButtonHint)));
    // Qt keeps only the checked option of a group in the chain's tab stops;
    // the chain itself is the order drawn.
    const QStringList order = tabOrder.split(' ');
    QCOMPARE(dialogtesting::tabOrder(dialog, order), order);
    QCOMPARE(dialogtesting::captions(dialog, pairs(captions)), pairs(captions));
    for (QPushButton *button : dialog->findChildren<QPushButton *>())
        QVERIFY(!button->isDefault() && !button->autoDefault());
    for (QComboBox *combo : dialog->findChildren<QComboBox *>())
        QVERIFY(!combo->isEditable());
    for (QPlainTextEdit *box :
         dialog->findChildren<QPlainTextEdit *>()) // only the condition scrolls
        QCOMPARE(box->verticalScrollBarPolicy() == Qt::ScrollBarAlwaysOn, type == 13);
    const QRegularExpression wideBlank(QStringLiteral("\\S {3,}\\S"));
    for (QLabel *label : dialog->findChildren<QLabel *>())
        QVERIFY2(!wideBlank.match(label->text()).hasMatch(), qPrintable(label->text()));
    click(dialog, "cmdCancel");
}

void tst_ModuleDialogs::fieldsLoadAndCommit_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("stored"); // null: never set
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("typed"); // null: left as loaded
    QTest::addColumn<QString>("written");
    row("play-text-trimmed", 3, {"txtTTS", "TextToPlay", "Hi", "Hi", " Welcome ", " Welcome "});
    row("play-wave-lost", 3, {"txtWaveFile", "FileName", "/a.wav", "/a.wav", "/b.wav", "/b.wav"});
    row("play-replays-lost", 3, {"txtReplayCount", "ReplayCount", "4", "4", "2", "2"});
    row("play-pause-lost", 3, {"txtPauseBetn", "PauseBetn", "7", "7", "3", "3"});
    row("play-option-lost", 3, {"optTTS_0", "isTextMsg", "false", "false", "true", "true"});
    // A spoken prompt keeps the wave file it does not use.
    row("play-unused-wave-dropped", 3, {"optTTS_0", "FileName", "/a", "true", "true", "/a"});
    row("play-pause-above-range-clipped", 3, {"txtPauseBetn", "PauseBetn", "75", "75", {}, "75"});
    row("condition-lines-lost", 13, {"txtCondition", "Condition", "a\nb", "a\nb", " x\n", " x\n"});
    row("condition-empty-refused", 13, {"txtCondition", "Condition", "old", "old", "", ""});
    row("email-to-swapped", 9, {"txtTo", "SendTo", "t@x", "t@x", " u@x ", " u@x "});
    row("email-empty-refused", 9, {"txtTo", "SendTo", "t@x", "t@x", "", ""});
    row("email-from-swapped", 9, {"txtFrom", "MailFrom", "f@x", "f@x", "g@x", "g@x"});
    row("email-subject-lost", 9, {"txtSubject", "Subject", "S", "S", "T", "T"});
    row("email-attachment-trimmed", 9, {"txtAttachment", "Attachment", "/a", "/a", " /b ", " /b "});
    row("email-message-lines-lost", 9, {"txtMessage", "Message", "M", "M", "Hi\nyou", "Hi\nyou"});
    row("query-connection-swapped", 8, {"txtConString", "ConnectionString", "C", "C", "D", "D"});
    row("query-text-swapped", 8, {"txtQuery", "QueryString", "Q", "Q", "select 1", "select 1"});
    row("executable-file-swapped", 11, {"TxtFileName", "FileName", "/bin/a", "/bin/a", "/e", "/e"});
    row("executable-arguments-trimmed",
        11,
        {"txtArguments", "CommandLine", "-x", "-x", " a", " a"});
    row("executable-mode-row-swapped",
        11,
        {"cboRunMode", "RunMode", "1", "1-Normal", "0-Silent", "0"});
    row("executable-new-module-silent",
        11,
        {"cboRunMode", "RunMode", {}, "0-Silent", "1-Normal", "1"});
    row("executable-no-mode-not-zero", 11, {"cboRunMode", "RunMode", "5", "", {}, "0"});
    row("stale-exit-selected", 13, {"cboFail", "OnFail", "[Gone]", "", {}, ""});
    row("cleared-exit-kept", 8, {"cboNoRecord", "OnNoRecord", "[End Call]", "End Call", "", ""});
    row("digit-beep-lost", 4, {"chkPlayBeep", "PlayBeep", "true", "true", "false", "false"});
    row("digit-timeout-lost", 4, {"txtTimeOut", "TimeOut", "7", "7", "12", "12"});
    row("digit-timeout-above-range-clipped", 4, {"txtTimeOut", "TimeOut", "90", "90", {}, "90"});
    row("number-beep-lost", 5, {"chkPlayBeep", "PlayBeep", "false", "false", "true", "true"});
    row("number-least-lost", 5, {"txtMinDigits", "MinLength", "3", "3", "2", "2"});
    row("number-greatest-lost", 5, {"txtMaxDigits", "MaxLength", "8", "8", "9", "9"});
    row("number-greatest-above-range-clipped",
        5,
        {"txtMaxDigits", "MaxLength", "75", "75", {}, "75"});
    row("number-timeout-lost", 5, {"txtTimeOut", "TimeOut", "10", "10", "11", "11"});
    row("number-timeout-fraction-rounded", 5, {"txtTimeOut", "TimeOut", "2.5", "2.5", {}, "2.5"});
    row("number-predefined-untrimmed",
        5,
        {"txtPreDefBuffer", "PreDefBuffer", "5", "5", " 1 ", "1"});
    row("number-prompt-trimmed", 5, {"txtTTS", "TextToPlay", "", "", " Number ", " Number "});
    row("record-beep-lost", 7, {"chkPlayBeep", "PlayBeep", "true", "true", "false", "false"});
    row("record-stop-lost",
        7,
        {"chkStopRecordOnDigit", "StopOnDigit", "false", "false", "true", "true"});
    row("record-length-lost", 7, {"txtRecordLen", "RecordLen", "45", "45", "20", "20"});
    row("record-length-below-range-raised", 7, {"txtRecordLen", "RecordLen", "0", "0", {}, "0"});
    row("extension-trimmed", 6, {"txtExtNo", "DefaultExt", "200", "200", " 20a ", " 20a "});
}

// Shows the stored value, keeps it through an OK without an edit, and writes
// what was typed once the name made the dialog edited.
void tst_ModuleDialogs::fieldsLoadAndCommit()
{
    QFETCH(qint16, type);
    QFETCH(QString, field);
    QFETCH(QString, key);
    QFETCH(QString, stored);
    QFETCH(QString, shown);
    QFETCH(QString, typed);
    QFETCH(QString, written);
    frmScriptViewer w;
    addModules(w, type);
    if (!stored.isNull())
        definitionOf(w, 2).setValue(key, stored);
    const QJsonObject before = definitionOf(w, 2).storedValues();
    ivr::PropertyDialog *dialog = open(w, 2);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("2"));
    QCOMPARE(shownIn(dialog, field), shown);
    click(dialog, "cmdOk"); // what the load set is no edit
    QVERIFY(!w.Changed());
    QCOMPARE(definitionOf(w, 2).storedValues(), before);
    dialog = open(w, 2);
    if (!typed.isNull())
        enter(dialog, field, typed);
    enter(dialog, "txtModuleName", QStringLiteral(" Step "));
    click(dialog, "cmdOk");
    QCOMPARE(m_messages->count(), 0);
    QVERIFY(w.Changed());
    QCOMPARE(module(w, 2)->moduleData()->Name(), QStringLiteral(" Step "));
    QCOMPARE(definitionOf(w, 2).value(key).toString(), written);
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
    m_give.clear();
    answerPicker();
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
        QCOMPARE(exitOf(w, 2, qPrintable(exit)), exit == key ? QStringLiteral("[4]") : QString());
    QCOMPARE(linkedTargets(w, 2), QStringList{"4"});
}

void tst_ModuleDialogs::reopenKeepsModule_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<QString>("chosen");         // control=text|...
    QTest::addColumn<QString>("reopenedArrows"); // to these targets, split by "|"
    row("condition-arrows-lost",
        13,
        {"cboSuccess=3|cboFail=End Call|txtCondition=x", "3|End Call"});
    row("email-arrows-lost", 9, {"cboSuccess=3|cboFail=End Call|txtTo=a@b", "3|End Call"});
    row("query-no-record-arrow-drawn", 8, {"cboFail=End Call|cboNoRecord=3", "End Call"});
    row("executable-arrows-drawn", 11, {"cboSuccess=3|cboFail=End Call|cboRunMode=1-Normal", ""});
    row("digit-arrows-lost", 4, {"cboFlow_0=3|cboFlow_12=4|txtTimeOut=9", "3|4"});
    row("number-fields-lost", 5, {"cboSuccess=3|cboTimeout=End Call|txtMinDigits=2", "3|End Call"});
    row("record-fields-lost", 7, {"cboNext=4|chkStopRecordOnDigit=true|txtRecordLen=20", "4"});
    row("transfer-fields-lost", 6, {"txtExtNo=200|txtTTS=Hold on", ""});
}

void tst_ModuleDialogs::reopenKeepsModule()
{
    QFETCH(qint16, type);
    QFETCH(QString, chosen);
    QFETCH(QString, reopenedArrows);
    const QString path = m_folder->file(QStringLiteral("flow.ivr"));
    QJsonObject saved;
    {
        frmScriptViewer w;
        addModules(w, type);
        ivr::PropertyDialog *dialog = open(w, 2);
        enter(dialog, "txtModuleName", QStringLiteral("Step"));
        fill(dialog, chosen);
        click(dialog, "cmdOk");
        saved = definitionOf(w, 2).storedValues();
        w.setFileName(path);
        QVERIFY(w.SaveScript(false));
    }
    frmScriptViewer w;
    w.OpenScript(path);
    QCOMPARE(m_messages->count(), 0);
    qint16 step = -1;
    for (qint16 i = 0; i <= w.cmVorelModule().ubound(); ++i) {
        if (w.cmVorelModule().exists(i) && module(w, i)->moduleData()->Name() == "Step")
            step = i;
    }
    QVERIFY(step >= 0);
    QCOMPARE(module(w, step)->ModuleType(), type);
    QJsonObject reopened = definitionOf(w, step).storedValues();
    for (QJsonObject *values : {&saved, &reopened}) {
        values->remove("Left"); // placed through the canvas, not the dialog
        values->remove("Top");
    }
    QCOMPARE(reopened, saved);
    QCOMPARE(linkedTargets(w, step), pairs(reopenedArrows));
    ivr::PropertyDialog *dialog = open(w, step); // opens on what was saved
    for (const QString &pair : pairs(chosen))
        QCOMPARE(shownIn(dialog, pair.section('=', 0, 0)), pair.section('=', 1));
    click(dialog, "cmdCancel");
}

void tst_ModuleDialogs::promptOptionsEnable()
{
    frmScriptViewer w;
    w.AddModule(3, 3000, 3000);
    ivr::PropertyDialog *dialog = open(w, 2); // a new module speaks text
    const auto enabled = [dialog](const char *name) {
        return control(dialog, name)->isEnabled();
    };
    QVERIFY(enabled("txtTTS") && enabled("lblTTS") && enabled("cmdPlay"));
    QVERIFY(!enabled("txtWaveFile") && !enabled("cmdBrowse") && !enabled("lblWaveFile"));
    control<QRadioButton>(dialog, "optTTS_1")->click();
    QVERIFY(!enabled("txtTTS") && !enabled("lblTTS"));
    QVERIFY(enabled("txtWaveFile") && enabled("cmdBrowse") && enabled("lblWaveFile"));
    click(dialog, "cmdCancel");
}

void tst_ModuleDialogs::spinArrowsStayInRange()
{
    frmScriptViewer w;
    w.AddModule(3, 3000, 3000);
    definitionOf(w, 2).setPauseBetn(75);
    ivr::PropertyDialog *dialog = open(w, 2);
    auto *spin = control<ivr::SpinBox>(dialog, "txtPauseBetn");
    spin->stepBy(1); // within 1..60 whatever the value held
    QCOMPARE(spin->value(), 60.0);
    click(dialog, "cmdCancel");
}

void tst_ModuleDialogs::connectDecidesAtOk_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QStringList>("choices");
    QTest::addColumn<QString>("written");
    QTest::addColumn<bool>("changed");
    QTest::newRow("new-choice-written") << "[End Call]" << QStringList{"2"} << "[2]" << true;
    QTest::newRow("changed-back-is-no-change")
            << "[End Call]" << QStringList{"2", "End Call"} << "[End Call]" << false;
    QTest::newRow("stale-target-kept-without-choice")
            << "[Gone]" << QStringList{} << "[Gone]" << false;
    QTest::newRow("stale-target-replaced-by-choice")
            << "[Gone]" << QStringList{"2"} << "[2]" << true;
}

void tst_ModuleDialogs::connectDecidesAtOk()
{
    QFETCH(QString, stored);
    QFETCH(QStringList, choices);
    QFETCH(QString, written);
    QFETCH(bool, changed);
    frmScriptViewer w;
    w.AddModule(3, 3000, 3000);
    definitionOf(w, 0).setNextModule(stored);
    ivr::PropertyDialog *dialog = open(w, 0);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Connected"));
    QCOMPARE(control<QComboBox>(dialog, "cboCurrModule")->count(), 2); // never Connected
    for (const QString &choice : choices)
        enter(dialog, "cboCurrModule", choice);
    click(dialog, "cmdOk");
    QCOMPARE(exitOf(w, 0, "NextModule"), written);
    QCOMPARE(w.Changed(), changed);
    if (changed) {
        const qint16 arrow = w.DrawLine().LineMatrix(0, 2);
        QVERIFY(arrow > 0 && w.VorelDirection1().at(arrow)->isVisible());
        QCOMPARE(w.DrawLine().LineMatrix(0, 1), qint16(0));
    }
}

void tst_ModuleDialogs::endBrowse_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("picked"); // "" cancels
    QTest::addColumn<QString>("after");
    QTest::addColumn<bool>("edited");
    QTest::newRow("same-file-leaves-clean") << "/a.wav"
                                            << "/a.wav"
                                            << "/a.wav" << false;
    QTest::newRow("other-file-edits") << "/a.wav"
                                      << "/b.wav"
                                      << "/b.wav" << true;
    QTest::newRow("cancel-over-empty-leaves-clean") << ""
                                                    << ""
                                                    << "" << false;
    QTest::newRow("cancel-clears-filled-box") << "/a.wav"
                                              << ""
                                              << "" << true;
}

void tst_ModuleDialogs::endBrowse()
{
    QFETCH(QString, before);
    QFETCH(QString, picked);
    QFETCH(QString, after);
    QFETCH(bool, edited);
    frmScriptViewer w;
    ivr::Definition &d = definitionOf(w, 1);
    d.setisTextMsg(false);
    d.setFileName(before);
    m_give = picked;
    answerPicker();
    ivr::PropertyDialog *dialog = open(w, 1);
    QSignalSpy completed(dialog, &ivr::PropertyDialog::CompleteEdit);
    click(dialog, "cmdBrowse");
    QCOMPARE(QStringList({m_seen[0], m_seen[1], m_seen[3], m_seen[4]}),
             QStringList({"Select Wav File", "Wav Files (*.wav)|*.wav", "", "81000"}));
    QCOMPARE(shownIn(dialog, "txtWaveFile"), after);
    click(dialog, "cmdOk");
    QCOMPARE(completed.first().at(1).toBool(), edited);
    QCOMPARE(d.FileName(), after);
}

void tst_ModuleDialogs::endOnlyEnablesWindow()
{
    frmScriptViewer w;
    ivr::PropertyDialog *dialog = open(w, 1);
    QVERIFY(!control(dialog, "txtModuleName"));
    enter(dialog, "txtTTS", QStringLiteral("Goodbye"));
    click(dialog, "cmdOk");
    QVERIFY(w.isEnabled());
    QVERIFY(!w.Changed()); // its end neither marks nor clears the script
    QCOMPARE(definitionOf(w, 1).TextToPlay(), QStringLiteral("Goodbye"));
    QCOMPARE(module(w, 1)->moduleData()->Name(), QStringLiteral("End Call"));
    QVERIFY(w.DrawLine().LineMatrix(0, 1) > 0); // the first link stands
}

void tst_ModuleDialogs::pickerKeepsLastName_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<QString>("playPick"); // picked in Play first, "" for no use
    QTest::addColumn<QString>("answer");   // "" cancels
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    row("executable-choice-lost", 11, {"", "/usr/bin/env", "", "/usr/bin/env"});
    row("executable-cancel-drops-last-name", 11, {"/srv/a.wav", "", "/bin/old", "/srv/a.wav"});
    row("email-cancel-drops-last-name", 9, {"/srv/a.wav", "", "", "/srv/a.wav"});
    row("email-first-cancel-leaves-old-text", 9, {"", "", "/srv/old.pdf", ""});
    row("email-choice-lost", 9, {"/srv/a.wav", "/srv/report.pdf", "", "/srv/report.pdf"});
}

void tst_ModuleDialogs::pickerKeepsLastName()
{
    QFETCH(qint16, type);
    QFETCH(QString, playPick);
    QFETCH(QString, answer);
    QFETCH(QString, before);
    QFETCH(QString, after);
    const QString key = type == 9 ? "Attachment" : "FileName";
    frmScriptViewer w;
    addModules(w, type);
    definitionOf(w, 2).setValue(key, before);
    answerPicker();
    if (!playPick.isEmpty()) {
        m_give = playPick;
        ivr::PropertyDialog *play = open(w, 3);
        control<QRadioButton>(play, "optTTS_1")->click();
        click(play, "cmdBrowse");
        click(play, "cmdCancel");
    }
    m_give = answer;
    ivr::PropertyDialog *dialog = open(w, 2);
    click(dialog, "cmdBrowse");
    // Title and name as Play left them; the filter of its own, "*.exe" widened.
    const QString title = playPick.isEmpty() ? QString() : QStringLiteral("Select Wav File");
    const QString filters = type == 9 ? "All Files (*)" : "Application (*.exe);All Files (*)";
    QCOMPARE(QStringList({m_seen[0], m_seen[2], m_seen[4], m_seen[5]}),
             QStringList({title, filters, "81000", "1"}));
    QCOMPARE(shownIn(dialog, type == 9 ? "txtAttachment" : "TxtFileName"), after);
    click(dialog, "cmdOk");
    QCOMPARE(w.Changed(), before != after);
    QCOMPARE(definitionOf(w, 2).value(key).toString(), after);
}

void tst_ModuleDialogs::lengthAfterName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<double>("least");
    QTest::addColumn<double>("greatest");
    QTest::addColumn<QStringList>("said"); // at the first OK, and at a second with the name mended
    const QString length = QStringLiteral("Minimum length of digit is greater then maximum length");
    QTest::newRow("equal-lengths-refused") << "N" << 5.0 << 5.0 << QStringList{};
    QTest::newRow("greatest-below-least-passed") << "N" << 5.0 << 4.0 << QStringList{length};
    QTest::newRow("length-before-name") << "" << 5.0 << 4.0 << QStringList{"Invalid Name", length};
    QTest::newRow("name-message-missing") << " " << 5.0 << 6.0 << QStringList{"Invalid Name"};
    QTest::newRow("unchecked-without-edit") << "2" << 9.0 << 3.0 << QStringList{length};
}

void tst_ModuleDialogs::lengthAfterName()
{
    QFETCH(QString, name);
    QFETCH(double, least);
    QFETCH(double, greatest);
    QFETCH(QStringList, said);
    frmScriptViewer w;
    addModules(w, 5);
    definitionOf(w, 2).setMinLength(least);
    definitionOf(w, 2).setMaxLength(greatest);
    ivr::PropertyDialog *dialog = open(w, 2);
    QPointer<QWidget> alive(dialog);
    auto *nameBox = control<QLineEdit>(dialog, "txtModuleName");
    if (name != nameBox->text())
        nameBox->setText(name);
    click(dialog, "cmdOk");
    if (m_messages->count() == 1 && said.size() == 2) {
        nameBox->setText(QStringLiteral("Mended"));
        click(dialog, "cmdOk");
    }
    QStringList texts;
    for (const ivr::MsgBox::Message &m : m_messages->messages()) {
        texts << m.text;
        QCOMPARE(m.icon, QMessageBox::Critical);
        QCOMPARE(m.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    }
    QCOMPARE(texts, said);
    QCOMPARE(alive.isNull(), said.isEmpty()); // refused: the dialog stays
    if (alive) {
        QCOMPARE(definitionOf(w, 2).MinLength(), least); // nothing written
        click(dialog, "cmdCancel");                      // Cancel still closes
        QVERIFY(alive.isNull());
    }
}

// The digit menu and the number entry open on their Play page each time;
// OK and Cancel stand outside both pages.
void tst_ModuleDialogs::opensOnPlay()
{
    frmScriptViewer w;
    addModules(w, 4);
    w.AddModule(5, 9000, 3000);
    for (const qint16 index : {qint16(2), qint16(5)}) {
        for (int again = 0; again < 2; ++again) {
            ivr::PropertyDialog *dialog = open(w, index);
            auto *tabs = control<QTabWidget>(dialog, "tabPages");
            QCOMPARE(tabs->currentIndex(), 0);
            QCOMPARE(tabs->tabText(0) + tabs->tabText(1), QStringLiteral("PlayFlow"));
            QVERIFY(control(dialog, "fraDigitProp_0")->isVisible());
            QVERIFY(!control(dialog, "fraDigitProp_1")->isVisible());
            tabs->setCurrentIndex(1);
            QVERIFY(control(dialog, "fraDigitProp_1")->isVisible());
            QVERIFY(control(dialog, "cmdOk")->isVisible()
                    && control(dialog, "cmdCancel")->isVisible());
            click(dialog, "cmdCancel");
        }
    }
}

QTEST_MAIN(tst_ModuleDialogs)
#include "tst_moduledialogs.moc"
