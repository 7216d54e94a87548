#include "dialogtesting.h"

using namespace dialogtesting;

// The Condition, E-mail, Query and Executable dialogs of a real script window:
// 0 Connected, 1 End Call, 2 the module under edit, 3 a Play module named "3".
class tst_FlowDialogs : public QObject, private Fixture
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(setUp()); }
    void cleanup() { tearDown(); }
    void loadsFields_data();
    void loadsFields();
    void commitsFields_data();
    void commitsFields();
    void commitsExits_data();
    void commitsExits();
    void marksEdited_data();
    void marksEdited();
    void refusesName_data();
    void refusesName();
    void pickerKeepsLastName_data();
    void pickerKeepsLastName();
    void reopenKeepsModule_data();
    void reopenKeepsModule();
    void layoutAsDrawn_data();
    void layoutAsDrawn();
};

namespace {

void script(frmScriptViewer &w, qint16 type)
{
    w.AddModule(type, 3000, 3000);
    w.AddModule(3, 6000, 3000);
}

QStringList pairs(const QString &cell) // "a=1|b=2"
{
    return cell.isEmpty() ? QStringList() : cell.split('|');
}

void store(frmScriptViewer &w, const QStringList &pairs) // "Key=value"
{
    ivr::Definition &d = module(w, 2)->moduleData()->definition();
    for (const QString &pair : pairs)
        d.setValue(pair.section('=', 0, 0), pair.section('=', 1));
}

QString shownIn(QWidget *dialog, const QString &name)
{
    QWidget *c = control(dialog, qPrintable(name));
    if (auto *text = qobject_cast<QPlainTextEdit *>(c))
        return text->toPlainText();
    return c->property(qobject_cast<QComboBox *>(c) ? "currentText" : "text").toString();
}

QString storedIn(frmScriptViewer &w, const QString &key)
{
    return module(w, 2)->moduleData()->definition().value(key).toString();
}

QStringList linkedTargets(frmScriptViewer &w, qint16 from)
{
    QStringList targets;
    for (qint16 j = 0; j <= w.cmVorelModule().ubound(); ++j) {
        if (w.DrawLine().LineMatrix(from, j) > 0)
            targets << module(w, j)->moduleData()->Name();
    }
    targets.sort();
    return targets;
}

} // namespace

void tst_FlowDialogs::loadsFields_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<QString>("stored"); // Key=value|...
    QTest::addColumn<QString>("shown");  // control=text|...
    const auto row = [](const char *fault, qint16 type, const char *stored, const char *shown) {
        QTest::newRow(fault) << type << QString(stored) << QString(shown);
    };
    row("condition-lines-lost", 13, "Condition=a > 1\nor b", "txtCondition=a > 1\nor b");
    row("email-to-and-from-swapped",
        9,
        "SendTo=t@x|MailFrom=f@x|Subject=S|Attachment=/a|Message=M",
        "txtTo=t@x|txtFrom=f@x|txtSubject=S|txtAttachment=/a|txtMessage=M");
    row("query-texts-swapped", 8, "ConnectionString=C|QueryString=Q", "txtConString=C|txtQuery=Q");
    row("executable-fields-swapped",
        11,
        "FileName=/bin/true|CommandLine=-x|RunMode=1",
        "TxtFileName=/bin/true|txtArguments=-x|cboRunMode=1-Normal");
    row("executable-new-module-not-silent", 11, "", "cboRunMode=0-Silent");
    row("executable-mode-without-row-selected", 11, "RunMode=5", "cboRunMode=");
    row("exit-selections-swapped",
        8,
        "OnSuccess=[3]|OnFail=[End Call]|OnNoRecord=[2]",
        "cboSuccess=3|cboFail=End Call|cboNoRecord=2");
    row("stale-exit-selected", 13, "OnFail=[Gone]", "cboFail=");
}

void tst_FlowDialogs::loadsFields()
{
    QFETCH(qint16, type);
    QFETCH(QString, stored);
    QFETCH(QString, shown);
    frmScriptViewer w;
    script(w, type);
    store(w, pairs(stored));
    ivr::PropertyDialog *dialog = open(w, 2);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("2"));
    QCOMPARE(shownIn(dialog, "txtModuleName"), QStringLiteral("2"));
    for (const QString &pair : pairs(shown))
        QCOMPARE(shownIn(dialog, pair.section('=', 0, 0)), pair.section('=', 1));
    // What the load set is no edit: OK keeps every stored value.
    click(dialog, "cmdOk");
    QVERIFY(!w.Changed());
    for (const QString &pair : pairs(stored))
        QCOMPARE(storedIn(w, pair.section('=', 0, 0)), pair.section('=', 1));
}

void tst_FlowDialogs::commitsFields_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("typed");   // control=text|...
    QTest::addColumn<QString>("written"); // Key=value|...
    const auto row = [](const char *fault,
                        qint16 type,
                        const char *stored,
                        const char *typed,
                        const char *written) {
        QTest::newRow(fault) << type << QString(stored) << QString(typed) << QString(written);
    };
    row("condition-trimmed-or-lines-lost",
        13,
        "",
        "txtCondition= x > 1\n and y ",
        "Condition= x > 1\n and y ");
    row("condition-empty-refused", 13, "Condition=old", "txtCondition=", "Condition=");
    row("email-boxes-to-wrong-keys",
        9,
        "",
        "txtFrom=f@x|txtTo= t@x|txtSubject=S|txtAttachment= /srv/a b.pdf |txtMessage=Hi\nthere",
        "MailFrom=f@x|SendTo= t@x|Subject=S|Attachment= /srv/a b.pdf |Message=Hi\nthere");
    row("email-empty-refused",
        9,
        "SendTo=t@x",
        "txtTo=",
        "SendTo=|MailFrom=|Subject=|Attachment=|Message=");
    row("query-texts-to-wrong-keys",
        8,
        "",
        "txtConString=Driver=QSQLITE;Database=/x.db|txtQuery=select 1",
        "ConnectionString=Driver=QSQLITE;Database=/x.db|QueryString=select 1");
    row("executable-fields-to-wrong-keys",
        11,
        "",
        "TxtFileName=/usr/bin/env|txtArguments= a b|cboRunMode=1-Normal",
        "FileName=/usr/bin/env|CommandLine= a b|RunMode=1");
    row("executable-no-mode-not-zero", 11, "RunMode=7", "txtArguments=x", "RunMode=0");
}

void tst_FlowDialogs::commitsFields()
{
    QFETCH(qint16, type);
    QFETCH(QString, stored);
    QFETCH(QString, typed);
    QFETCH(QString, written);
    frmScriptViewer w;
    script(w, type);
    store(w, pairs(stored));
    ivr::PropertyDialog *dialog = open(w, 2);
    enter(dialog, "txtModuleName", QStringLiteral(" Step "));
    fill(dialog, pairs(typed));
    click(dialog, "cmdOk");
    QCOMPARE(m_messages->count(), 0);
    QVERIFY(w.Changed());
    QCOMPARE(module(w, 2)->moduleData()->Name(), QStringLiteral(" Step "));
    for (const QString &pair : pairs(written))
        QCOMPARE(storedIn(w, pair.section('=', 0, 0)), pair.section('=', 1));
}

void tst_FlowDialogs::commitsExits_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("chosen");  // combo=target|..., "" for none
    QTest::addColumn<QString>("written"); // Key=value|...
    const auto row = [](const char *fault,
                        qint16 type,
                        const char *stored,
                        const char *chosen,
                        const char *written) {
        QTest::newRow(fault) << type << QString(stored) << QString(chosen) << QString(written);
    };
    row("condition-exits-swapped",
        13,
        "",
        "cboSuccess=3|cboFail=End Call",
        "OnSuccess=[3]|OnFail=[End Call]");
    row("email-exits-swapped",
        9,
        "",
        "cboSuccess=End Call|cboFail=2",
        "OnSuccess=[End Call]|OnFail=[2]");
    row("query-no-record-lost",
        8,
        "",
        "cboSuccess=3|cboFail=End Call|cboNoRecord=2",
        "OnSuccess=[3]|OnFail=[End Call]|OnNoRecord=[2]");
    row("executable-exits-swapped", 11, "", "cboSuccess=2|cboFail=3", "OnSuccess=[2]|OnFail=[3]");
    row("cleared-exit-kept",
        8,
        "OnSuccess=[3]|OnNoRecord=[End Call]",
        "cboNoRecord=",
        "OnSuccess=[3]|OnNoRecord=");
}

void tst_FlowDialogs::commitsExits()
{
    QFETCH(qint16, type);
    QFETCH(QString, stored);
    QFETCH(QString, chosen);
    QFETCH(QString, written);
    frmScriptViewer w;
    script(w, type);
    store(w, pairs(stored));
    ivr::PropertyDialog *dialog = open(w, 2);
    QCOMPARE(control<QComboBox>(dialog, "cboSuccess")->count(), 3); // never Connected
    fill(dialog, pairs(chosen));
    click(dialog, "cmdOk");
    QStringList targets;
    for (const QString &pair : pairs(written)) {
        const QString value = pair.section('=', 1);
        QCOMPARE(storedIn(w, pair.section('=', 0, 0)), value);
        if (!value.isEmpty())
            targets << value.mid(1, value.size() - 2);
    }
    targets.sort();
    QCOMPARE(linkedTargets(w, 2), targets);
}

void tst_FlowDialogs::marksEdited_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<QString>("control");
    const QList<std::pair<qint16, QStringList>> dialogs{
            {13, {"txtModuleName", "txtCondition", "cboSuccess", "cboFail"}},
            {9,
             {"txtTo",
              "txtFrom",
              "txtSubject",
              "txtAttachment",
              "txtMessage",
              "cboSuccess",
              "cboFail"}},
            {8, {"txtConString", "txtQuery", "cboSuccess", "cboFail", "cboNoRecord"}},
            {11, {"TxtFileName", "txtArguments", "cboRunMode", "cboSuccess", "cboFail"}},
    };
    for (const auto &[type, controls] : dialogs) {
        for (const QString &name : controls)
            QTest::addRow("%d-%s-unmarked", type, qPrintable(name)) << type << name;
    }
}

void tst_FlowDialogs::marksEdited()
{
    QFETCH(qint16, type);
    QFETCH(QString, control);
    frmScriptViewer w;
    script(w, type);
    ivr::PropertyDialog *dialog = open(w, 2);
    const bool combo = control.startsWith("cbo");
    enter(dialog, control, !combo ? "x" : control == "cboRunMode" ? "1-Normal" : "3");
    click(dialog, "cmdOk");
    QVERIFY(w.Changed());
}

void tst_FlowDialogs::refusesName_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("said");
    QTest::newRow("condition-blank-name-passed") << qint16(13) << "  "
                                                 << "Invalid Name";
    QTest::newRow("email-duplicate-passed") << qint16(9) << "3"
                                            << "Duplicate Name";
    QTest::newRow("query-reserved-passed") << qint16(8) << "Common"
                                           << "Invalid Name";
    QTest::newRow("executable-duplicate-passed") << qint16(11) << "End Call"
                                                 << "Duplicate Name";
}

void tst_FlowDialogs::refusesName()
{
    QFETCH(qint16, type);
    QFETCH(QString, typed);
    QFETCH(QString, said);
    frmScriptViewer w;
    script(w, type);
    ivr::PropertyDialog *dialog = open(w, 2);
    enter(dialog, "txtModuleName", typed);
    enter(dialog, "cboSuccess", "3");
    click(dialog, "cmdOk");
    QCOMPARE(m_messages->count(), 1);
    QCOMPARE(m_messages->lastText(), said);
    QCOMPARE(m_messages->messages().first().icon, QMessageBox::Critical);
    QVERIFY(dialog->isVisible());
    QCOMPARE(shownIn(dialog, "txtModuleName"), typed);
    QCOMPARE(storedIn(w, "OnSuccess"), QString());
    click(dialog, "cmdCancel");
}

void tst_FlowDialogs::pickerKeepsLastName_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("playPick"); // picked in Play first, "" for no use
    QTest::addColumn<QString>("answer");   // "" cancels
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    const auto row = [](const char *fault,
                        qint16 type,
                        const char *playPick,
                        const char *answer,
                        const char *before,
                        const char *after) {
        QTest::newRow(fault) << type << QString(type == 9 ? "txtAttachment" : "TxtFileName")
                             << QString(playPick) << QString(answer) << QString(before)
                             << QString(after);
    };
    row("executable-choice-lost", 11, "", "/usr/bin/env", "", "/usr/bin/env");
    row("executable-cancel-drops-last-name",
        11,
        "/srv/hello.wav",
        "",
        "/bin/old",
        "/srv/hello.wav");
    row("email-cancel-drops-last-name", 9, "/srv/hello.wav", "", "", "/srv/hello.wav");
    row("email-first-cancel-leaves-old-text", 9, "", "", "/srv/old.pdf", "");
    row("email-choice-lost", 9, "/srv/hello.wav", "/srv/report.pdf", "", "/srv/report.pdf");
}

void tst_FlowDialogs::pickerKeepsLastName()
{
    QFETCH(qint16, type);
    QFETCH(QString, box);
    QFETCH(QString, playPick);
    QFETCH(QString, answer);
    QFETCH(QString, before);
    QFETCH(QString, after);
    frmScriptViewer w;
    w.AddModule(type, 3000, 3000);
    w.AddModule(3, 6000, 3000);
    store(w, {(type == 9 ? "Attachment=" : "FileName=") + before});
    QString seen;
    QString give = playPick;
    ivr::CommonDialog::setTestAnswer([&](const ivr::CommonDialog &d, ivr::CommonDialog::Mode) {
        seen = QStringList{d.DialogTitle,
                           d.nameFilters().join(';'),
                           QString::number(d.Flags, 16),
                           QString::number(d.FilterIndex)}
                       .join('|');
        return give.isEmpty() ? std::nullopt : std::optional<QString>(give);
    });
    if (!playPick.isEmpty()) {
        ivr::PropertyDialog *play = open(w, 3);
        control<QRadioButton>(play, "optTTS_1")->click();
        click(play, "cmdBrowse");
        click(play, "cmdCancel");
    }
    give = answer;
    ivr::PropertyDialog *dialog = open(w, 2);
    click(dialog, "cmdBrowse");
    // Title and name as Play left them; the filter of its own, "*.exe" widened.
    const QString title = playPick.isEmpty() ? QString() : QStringLiteral("Select Wav File");
    const QString filters = type == 9 ? "All Files (*)" : "Application (*.exe);All Files (*)";
    QCOMPARE(seen, QStringList({title, filters, "81000", "1"}).join('|'));
    QCOMPARE(shownIn(dialog, box), after);
    click(dialog, "cmdOk");
    QCOMPARE(w.Changed(), before != after);
    QCOMPARE(storedIn(w, type == 9 ? "Attachment" : "FileName"), after);
}

void tst_FlowDialogs::reopenKeepsModule_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<QString>("chosen");             // control=text|...
    QTest::addColumn<QStringList>("reopenedArrows"); // to these targets
    QTest::newRow("condition-arrows-lost")
            << qint16(13) << "cboSuccess=3|cboFail=End Call|txtCondition=x"
            << QStringList{"3", "End Call"};
    QTest::newRow("email-arrows-lost") << qint16(9) << "cboSuccess=3|cboFail=End Call|txtTo=a@b"
                                       << QStringList{"3", "End Call"};
    QTest::newRow("query-no-record-arrow-drawn")
            << qint16(8) << "cboSuccess=End Call|cboFail=End Call|cboNoRecord=3|txtQuery=q"
            << QStringList{"End Call"};
    QTest::newRow("executable-arrows-drawn")
            << qint16(11) << "cboSuccess=3|cboFail=End Call|cboRunMode=1-Normal" << QStringList{};
}

void tst_FlowDialogs::reopenKeepsModule()
{
    QFETCH(qint16, type);
    QFETCH(QString, chosen);
    QFETCH(QStringList, reopenedArrows);
    const QString path = m_folder->file(QStringLiteral("flow.ivr"));
    QJsonObject saved;
    {
        frmScriptViewer w;
        script(w, type);
        ivr::PropertyDialog *dialog = open(w, 2);
        enter(dialog, "txtModuleName", QStringLiteral("Step"));
        fill(dialog, pairs(chosen));
        click(dialog, "cmdOk");
        saved = module(w, 2)->moduleData()->definition().storedValues();
        w.setFileName(path);
        QVERIFY(w.SaveScript(false));
    }
    frmScriptViewer w;
    w.OpenScript(path);
    qint16 step = -1;
    for (qint16 i = 0; i <= w.cmVorelModule().ubound(); ++i) {
        if (w.cmVorelModule().exists(i) && module(w, i)->moduleData()->Name() == "Step")
            step = i;
    }
    QVERIFY(step >= 0);
    QCOMPARE(module(w, step)->ModuleType(), type);
    QJsonObject reopened = module(w, step)->moduleData()->definition().storedValues();
    for (QJsonObject *values : {&saved, &reopened}) {
        values->remove("Left"); // placed through the canvas, not the dialog
        values->remove("Top");
    }
    QCOMPARE(reopened, saved);
    QCOMPARE(linkedTargets(w, step), reopenedArrows);
    // The dialog opens on what was saved.
    ivr::PropertyDialog *dialog = open(w, step);
    QCOMPARE(shownIn(dialog, "cboFail"), QStringLiteral("End Call"));
    click(dialog, "cmdCancel");
}

void tst_FlowDialogs::layoutAsDrawn_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<int>("help");
    QTest::addColumn<QString>("tabOrder"); // top to bottom
    QTest::addColumn<QString>("captions"); // name=text|...
    const QString buttons = "|cmdOk=&Ok|cmdCancel=&Cancel";
    QTest::newRow("condition")
            << qint16(13) << 9 << "txtModuleName|txtCondition|cboSuccess|cboFail|cmdOk|cmdCancel"
            << "lblFlow_0=Condition|lblFlow_1=On Success goto|lblFlow_2=On Fail goto" + buttons;
    QTest::newRow("email") << qint16(9) << 10
                           << "txtModuleName|txtFrom|txtTo|txtSubject|txtAttachment|cmdBrowse|"
                              "txtMessage|cboSuccess|cboFail|cmdOk|cmdCancel"
                           << "lblFlow_0=From|lblFlow_1=To|lblFlow_2=Subject|lblFlow_3=Attachment|"
                              "lblFlow_4=Message|lblFlow_5=On Success goto|"
                              "lblFlow_6=On Fail goto|cmdBrowse=..."
                                      + buttons;
    QTest::newRow("query") << qint16(8) << 8
                           << "txtModuleName|txtConString|cmdBrowse|txtQuery|cboSuccess|"
                              "cboNoRecord|cboFail|cmdOk|cmdCancel"
                           << "lbConString=Connection String|lblQuery=Query|Label1=On Success "
                              "goto|lblOnNoRecord=On No Record goto|lblFail=On Fail goto|"
                              "cmdBrowse=..."
                                      + buttons;
    QTest::newRow("executable") << qint16(11) << 11
                                << "txtModuleName|TxtFileName|cmdBrowse|txtArguments|cboRunMode|"
                                   "cboSuccess|cboFail|cmdOk|cmdCancel"
                                << "lblFileName=File Name|lblCmdLineArgu=Arguments|LblRunMode=Run "
                                   "Mode|Label1=On Success|Label2=On Fail|cmdBrowse=..."
                                           + buttons;
}

void tst_FlowDialogs::layoutAsDrawn()
{
    QFETCH(qint16, type);
    QFETCH(int, help);
    QFETCH(QString, tabOrder);
    QFETCH(QString, captions);
    frmScriptViewer w;
    script(w, type);
    ivr::PropertyDialog *dialog = open(w, 2);
    QCOMPARE(dialog->helpContext(), help);
    QCOMPARE(dialog->minimumSize(), dialog->maximumSize());
    const QStringList order = pairs(tabOrder);
    QCOMPARE(dialogtesting::tabOrder(dialog, order), order);
    QWidget *previous = nullptr;
    for (const QString &name : order) {
        QWidget *c = control(dialog, qPrintable(name));
        const int y = c->mapTo(dialog, QPoint()).y();
        QVERIFY2(!previous || y >= previous->mapTo(dialog, QPoint()).y(), qPrintable(name));
        previous = c;
    }
    QCOMPARE(dialogtesting::captions(dialog, pairs(captions)), pairs(captions));
    for (QComboBox *combo : dialog->findChildren<QComboBox *>())
        QVERIFY(!combo->isEditable());
    for (QPlainTextEdit *box :
         dialog->findChildren<QPlainTextEdit *>()) // only the condition scrolls
        QCOMPARE(box->verticalScrollBarPolicy() == Qt::ScrollBarAlwaysOn, type == 13);
    for (QPushButton *button : dialog->findChildren<QPushButton *>())
        QVERIFY(!button->isDefault() && !button->autoDefault());
    click(dialog, "cmdCancel");
}

QTEST_MAIN(tst_FlowDialogs)
#include "tst_flowdialogs.moc"
