#include "dialogtesting.h"
#include "exittables.h"
#include "spinbox.h"

#include <QCheckBox>
#include <QLabel>
#include <QPointer>
#include <QRegularExpression>
#include <QTabWidget>

using namespace dialogtesting;

// The digit menu, number entry, record and transfer dialogs: which combo
// writes which exit, which fields mark the dialog, the number's checks and a
// whole menu tree saved and opened again.
class tst_MenuDialogs : public QObject, private Fixture
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(setUp()); }
    void cleanup() { tearDown(); }
    void exitRows_data();
    void exitRows();
    void marksEdited_data();
    void marksEdited();
    void fieldsLoadAndCommit_data();
    void fieldsLoadAndCommit();
    void lengthAfterName_data();
    void lengthAfterName();
    void spinKeepsStoredValue_data();
    void spinKeepsStoredValue();
    void opensOnPlay();
    void menuTreeSurvivesSaveAndOpen();
    void layoutAsDrawn_data();
    void layoutAsDrawn();
};

namespace {

// A script with the dialog's module at 2 and two Play modules, "3" and "4",
// to lead to.
void addModules(frmScriptViewer &w, qint16 type)
{
    w.AddModule(type, 3000, 3000);
    w.AddModule(3, 6000, 3000);
    w.AddModule(3, 6000, 6000);
}

ivr::Definition &definitionOf(frmScriptViewer &w, qint16 i)
{
    return module(w, i)->moduleData()->definition();
}

} // namespace

void tst_MenuDialogs::exitRows_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<QString>("combo");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("label"); // name=caption of the row's label
    QTest::addColumn<int>("top");       // the combo's top in pixels
    const auto row = [](qint16 type, QString combo, QString key, QString label, int twips) {
        QTest::newRow(qPrintable(combo + "-writes-" + key))
                << type << combo << key << label << twips / 15;
    };
    const QStringList keys{"OnStar", "OnHash", "OnTimeOut"};
    const QStringList captions{"On * button", "On # button", "On Timeout goto"};
    for (int j = 0; j < 13; ++j) {
        const bool digit = j < 10;
        // Rows 12 and 13 leave the step of 330.
        row(4,
            QStringLiteral("cboFlow_%1").arg(j),
            digit ? QStringLiteral("OnDigit%1").arg(j) : keys.at(j - 10),
            QStringLiteral("lblFlow_%1=").arg(j)
                    + (digit ? QStringLiteral("On Digit %1 goto").arg(j) : captions.at(j - 10)),
            j < 11 ? 90 + 330 * j : (j == 11 ? 3735 : 4065));
    }
    row(5, "cboSuccess", "OnSuccess", "lblFlow_0=On Success goto", 135);
    row(5, "cboTimeout", "OnTimeOut", "lblFlow_1=On Timeout goto", 465);
    row(7, "cboNext", "OnFinish", "Label1=On complete goto", 720);
}

void tst_MenuDialogs::exitRows()
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
    for (QComboBox *other : dialog->findChildren<QComboBox *>()) {
        if (other != box)
            QCOMPARE(other->currentIndex(), -1);
    }
    QCOMPARE(box->y(), top);
    auto *caption = control<QLabel>(dialog, qPrintable(label.section('=', 0, 0)));
    QCOMPARE(caption->text(), label.section('=', 1));
    QCOMPARE(caption->y(), top + 3); // 45 below its combo

    box->setCurrentIndex(box->findText(QStringLiteral("4")));
    click(dialog, "cmdOk");
    for (const QString &exit : ivr::ExitTables::keys(type, ivr::ExitWalk::DialogWrites))
        QCOMPARE(exitOf(w, 2, qPrintable(exit)), exit == key ? QStringLiteral("[4]") : QString());
    QCOMPARE(w.DrawLine().LineMatrix(2, 3), qint16(0));
    QVERIFY(w.DrawLine().LineMatrix(2, 4) > 0);
}

void tst_MenuDialogs::marksEdited_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<QString>("field");
    QTest::addColumn<bool>("edited");
    const auto row = [](const char *name, qint16 type, const char *field, bool edited) {
        QTest::newRow(name) << type << QString::fromLatin1(field) << edited;
    };
    row("digit-timeout-spin-unmarked", 4, "txtTimeOut", true);
    row("digit-beep-unmarked", 4, "chkPlayBeep", true);
    row("digit-last-flow-combo-unmarked", 4, "cboFlow_12", true);
    row("digit-tab-change-counted", 4, "tabPages", false);
    row("number-min-spin-unmarked", 5, "txtMinDigits", true);
    row("number-max-spin-unmarked", 5, "txtMaxDigits", true);
    row("number-timeout-combo-unmarked", 5, "cboTimeout", true);
    row("number-predefined-alone-written", 5, "txtPreDefBuffer", false);
    row("number-tab-change-counted", 5, "tabPages", false);
    row("record-stop-on-digit-unmarked", 7, "chkStopRecordOnDigit", true);
    row("record-length-spin-unmarked", 7, "txtRecordLen", true);
    row("record-beep-unmarked", 7, "chkPlayBeep", true);
    row("transfer-name-unmarked", 6, "txtModuleName", true);
    row("transfer-extension-alone-written", 6, "txtExtNo", false);
    // Over an empty box a cancelled choice changes no text: only the
    // transfer's own mark makes it an edit.
    row("transfer-browse-cancel-unmarked", 6, "cmdBrowse", true);
    row("record-browse-cancel-over-empty-marked", 7, "cmdBrowse", false);
}

void tst_MenuDialogs::marksEdited()
{
    QFETCH(qint16, type);
    QFETCH(QString, field);
    QFETCH(bool, edited);
    ivr::CommonDialog::setTestAnswer(
            [](const ivr::CommonDialog &, ivr::CommonDialog::Mode) { return std::nullopt; });
    frmScriptViewer w;
    addModules(w, type);
    ivr::Definition &d = definitionOf(w, 2);
    d.setisTextMsg(false); // the file box and its button are enabled
    const QJsonObject before = d.storedValues();
    const QString name = module(w, 2)->moduleData()->Name();
    ivr::PropertyDialog *dialog = open(w, 2);
    QSignalSpy completed(dialog, &ivr::PropertyDialog::CompleteEdit);
    edit(dialog->findChild<QWidget *>(field));
    click(dialog, "cmdOk");
    QCOMPARE(completed.count(), 1);
    QCOMPARE(completed.first().at(1).toBool(), edited);
    QCOMPARE(w.Changed(), edited);
    if (!edited) {
        QCOMPARE(d.storedValues(), before); // the typing is lost
        QCOMPARE(module(w, 2)->moduleData()->Name(), name);
    }
}

void tst_MenuDialogs::fieldsLoadAndCommit_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QVariant>("typed");
    QTest::addColumn<QVariant>("written");
    const auto row = [](const char *name,
                        qint16 type,
                        const char *field,
                        const char *key,
                        QVariant stored,
                        QVariant typed,
                        QVariant written) {
        QTest::newRow(name) << type << QString::fromLatin1(field) << QString::fromLatin1(key)
                            << stored << typed << written;
    };
    row("predefined-number-untrimmed",
        5,
        "txtPreDefBuffer",
        "PreDefBuffer",
        "55",
        "  12 34* ",
        "12 34*");
    row("extension-trimmed", 6, "txtExtNo", "DefaultExt", "200", " 20a ", " 20a ");
    row("number-prompt-trimmed", 5, "txtTTS", "TextToPlay", "", " Your number ", " Your number ");
    row("digit-beep-lost", 4, "chkPlayBeep", "PlayBeep", true, false, false);
    row("digit-timeout-lost", 4, "txtTimeOut", "TimeOut", 7, 12, 12);
    row("number-beep-lost", 5, "chkPlayBeep", "PlayBeep", false, true, true);
    row("number-least-lost", 5, "txtMinDigits", "MinLength", 3, 2, 2);
    row("number-greatest-lost", 5, "txtMaxDigits", "MaxLength", 8, 9, 9);
    row("number-timeout-lost", 5, "txtTimeOut", "TimeOut", 10, 11, 11);
    row("record-beep-lost", 7, "chkPlayBeep", "PlayBeep", true, false, false);
    row("record-stop-on-digit-lost", 7, "chkStopRecordOnDigit", "StopOnDigit", false, true, true);
    row("record-length-lost", 7, "txtRecordLen", "RecordLen", 45, 20, 20);
}

// Shows the stored value, and writes what was typed once any other field
// made the dialog edited.
void tst_MenuDialogs::fieldsLoadAndCommit()
{
    QFETCH(qint16, type);
    QFETCH(QString, field);
    QFETCH(QString, key);
    QFETCH(QVariant, stored);
    QFETCH(QVariant, typed);
    QFETCH(QVariant, written);
    frmScriptViewer w;
    addModules(w, type);
    definitionOf(w, 2).Properties(key).setValue(stored);
    ivr::PropertyDialog *dialog = open(w, 2);
    QWidget *c = dialog->findChild<QWidget *>(field);
    if (auto *line = qobject_cast<QLineEdit *>(c)) {
        QCOMPARE(line->text(), stored.toString());
        line->setText(typed.toString());
    } else if (auto *text = qobject_cast<QPlainTextEdit *>(c)) {
        QCOMPARE(text->toPlainText(), stored.toString());
        text->setPlainText(typed.toString());
    } else if (auto *spin = qobject_cast<QDoubleSpinBox *>(c)) {
        QCOMPARE(spin->value(), stored.toDouble());
        spin->setValue(typed.toDouble());
    } else {
        auto *box = qobject_cast<QCheckBox *>(c);
        QCOMPARE(box->isChecked(), stored.toBool());
        box->setChecked(typed.toBool());
    }
    control<QLineEdit>(dialog, "txtModuleName")->setText(QStringLiteral("Renamed "));
    click(dialog, "cmdOk");
    const QVariant value = definitionOf(w, 2).Properties(key).Value();
    if (written.typeId() == QMetaType::Bool)
        QCOMPARE(value.toBool(), written.toBool());
    else if (written.typeId() == QMetaType::Int)
        QCOMPARE(value.toDouble(), written.toDouble());
    else
        QCOMPARE(value.toString(), written.toString());
    QCOMPARE(module(w, 2)->moduleData()->Name(), QStringLiteral("Renamed "));
}

void tst_MenuDialogs::lengthAfterName_data()
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

void tst_MenuDialogs::lengthAfterName()
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

void tst_MenuDialogs::spinKeepsStoredValue_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<QString>("spin");
    QTest::addColumn<QString>("key");
    QTest::addColumn<double>("stored");
    QTest::newRow("digit-timeout-above-range-clipped") << qint16(4) << "txtTimeOut"
                                                       << "TimeOut" << 90.0;
    QTest::newRow("number-greatest-above-range-clipped") << qint16(5) << "txtMaxDigits"
                                                         << "MaxLength" << 75.0;
    QTest::newRow("number-timeout-fraction-rounded") << qint16(5) << "txtTimeOut"
                                                     << "TimeOut" << 2.5;
    QTest::newRow("record-length-below-range-raised") << qint16(7) << "txtRecordLen"
                                                      << "RecordLen" << 0.0;
}

void tst_MenuDialogs::spinKeepsStoredValue()
{
    QFETCH(qint16, type);
    QFETCH(QString, spin);
    QFETCH(QString, key);
    QFETCH(double, stored);
    frmScriptViewer w;
    addModules(w, type);
    definitionOf(w, 2).Properties(key).setValue(stored);
    ivr::PropertyDialog *dialog = open(w, 2);
    QCOMPARE(control<ivr::SpinBox>(dialog, qPrintable(spin))->value(), stored);
    control<QLineEdit>(dialog, "txtModuleName")->setText(QStringLiteral("Edited"));
    click(dialog, "cmdOk");
    QVERIFY(w.Changed());
    QCOMPARE(definitionOf(w, 2).Properties(key).Value().toDouble(), stored);
}

void tst_MenuDialogs::opensOnPlay()
{
    frmScriptViewer w;
    addModules(w, 4);
    w.AddModule(5, 9000, 3000);
    for (const qint16 index : {qint16(2), qint16(5)}) {
        ivr::PropertyDialog *dialog = open(w, index);
        auto *tabs = control<QTabWidget>(dialog, "tabPages");
        QCOMPARE(tabs->currentIndex(), 0);
        QCOMPARE(tabs->tabText(0), QStringLiteral("Play"));
        QCOMPARE(tabs->tabText(1), QStringLiteral("Flow"));
        QVERIFY(control(dialog, "fraDigitProp_0")->isVisible());
        QVERIFY(!control(dialog, "fraDigitProp_1")->isVisible());
        tabs->setCurrentIndex(1);
        QVERIFY(control(dialog, "fraDigitProp_1")->isVisible());
        // OK and Cancel stand outside both pages.
        QVERIFY(control(dialog, "cmdOk")->isVisible());
        QVERIFY(control(dialog, "cmdCancel")->isVisible());
        click(dialog, "cmdCancel");
        dialog = open(w, index);
        QCOMPARE(control<QTabWidget>(dialog, "tabPages")->currentIndex(), 0);
        click(dialog, "cmdCancel");
    }
}

void tst_MenuDialogs::menuTreeSurvivesSaveAndOpen()
{
    const QString file = m_folder->file(QStringLiteral("menu tree.ivr"));
    {
        frmScriptViewer w;
        w.AddModule(4, 3000, 1000);  // 2: the menu
        w.AddModule(5, 3000, 4000);  // 3: number entry
        w.AddModule(7, 3000, 7000);  // 4: record
        w.AddModule(6, 3000, 9000);  // 5: transfer
        for (int i = 0; i < 10; ++i) // 6..15
            w.AddModule(3, float(6000 + 600 * i), 2000);

        // Opens a module's dialog, fills it in and confirms it: true when it closed.
        const auto confirm = [&w](qint16 index, const std::function<void(QWidget *)> &fill) {
            QPointer<ivr::PropertyDialog> dialog = open(w, index);
            if (!dialog)
                return false;
            fill(dialog);
            click(dialog, "cmdOk");
            return dialog.isNull();
        };
        QVERIFY(confirm(0, [](QWidget *d) { choose(d, "cboCurrModule", "2"); }));
        QVERIFY(confirm(2, [](QWidget *d) {
            control<QLineEdit>(d, "txtModuleName")->setText(QStringLiteral("Menu"));
            for (int j = 0; j < 13; ++j)
                choose(d, qPrintable(QStringLiteral("cboFlow_%1").arg(j)), QString::number(j + 3));
        }));
        QCOMPARE(definitionOf(w, 2).OnStar(), QStringLiteral("[13]"));
        QVERIFY(confirm(3, [](QWidget *d) {
            choose(d, "cboSuccess", "4");
            choose(d, "cboTimeout", "End Call");
        }));
        QVERIFY(confirm(4, [](QWidget *d) { choose(d, "cboNext", "5"); }));
        QVERIFY(confirm(5, [](QWidget *d) {
            control<QLineEdit>(d, "txtModuleName")->setText(QStringLiteral("Operator"));
            control<QLineEdit>(d, "txtExtNo")->setText(QStringLiteral("200"));
        }));
        // The renamed transfer is carried to the record's exit.
        QCOMPARE(definitionOf(w, 4).OnFinish(), QStringLiteral("[Operator]"));
        w.setFileName(file);
        QVERIFY(w.SaveScript(false));
        QVERIFY(w.close());
    }
    frmScriptViewer w;
    w.OpenScript(file);
    QCOMPARE(m_messages->count(), 0);
    QHash<QString, qint16> at;
    for (auto it = w.cmVorelModule().begin(); it != w.cmVorelModule().end(); ++it)
        at.insert((*it)->moduleData()->Name(), it.index());
    const auto arrow = [&w, &at](const QString &from, const QString &to) {
        const qint16 cell = w.DrawLine().LineMatrix(at.value(from), at.value(to));
        return cell > 0 && w.VorelDirection1().at(cell)->isVisible();
    };
    const QStringList targets{
            "3", "4", "Operator", "6", "7", "8", "9", "10", "11", "12", "13", "14", "15"};
    int arrows = 0;
    for (const QString &target : targets)
        arrows += arrow(QStringLiteral("Menu"), target) ? 1 : 0;
    QCOMPARE(arrows, 13);
    const ivr::Definition &menu = definitionOf(w, at.value("Menu"));
    for (int j = 0; j < 13; ++j) {
        const QString key = ivr::ExitTables::keys(4, ivr::ExitWalk::DialogWrites).at(j);
        QCOMPARE(menu.Properties(key).Value().toString(), '[' + targets.at(j) + ']');
    }
    QVERIFY(arrow("Connected", "Menu"));
    QVERIFY(arrow("3", "4") && arrow("3", "End Call") && arrow("4", "Operator"));
    QCOMPARE(definitionOf(w, at.value("Operator")).DefaultExt(), QStringLiteral("200"));
}

void tst_MenuDialogs::layoutAsDrawn_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<QSize>("client");
    QTest::addColumn<QString>("tabOrder"); // names split by blanks
    QTest::addColumn<QString>("captions"); // name=text, split by "|"
    QString flow;
    for (int j = 0; j < 13; ++j)
        flow += QStringLiteral(" cboFlow_%1").arg(j);
    const QString prompt = "txtModuleName optTTS_0 optTTS_1 txtWaveFile cmdBrowse";
    QTest::newRow("digit") << qint16(4) << QSize(386, 369)
                           << prompt + " txtTTS chkPlayBeep txtTimeOut" + flow
                                      + " cmdOk cmdCancel cmdPlay"
                           << "chkPlayBeep=Play Beep After message|Label2=Time out|Label2_1=sec"
                              "|cmdPlay=&Play|cmdOk=&Ok|cmdCancel=&Cancel";
    QTest::newRow("number") << qint16(5) << QSize(386, 332)
                            << prompt
                                       + " txtTTS chkPlayBeep txtPreDefBuffer txtMinDigits"
                                         " txtMaxDigits txtTimeOut cboSuccess cboTimeout cmdOk"
                                         " cmdCancel cmdPlay"
                            << "Label4=Predefined Number|Label3=Number length must be >="
                               "|Label3_1=digits|Label1=Number length must be <=|Label1_1=digits"
                               "|Label2=Time out|Label2_1=sec";
    QTest::newRow("record") << qint16(7) << QSize(370, 350)
                            << prompt
                                       + " txtTTS chkPlayBeep txtRecordLen cboNext cmdOk"
                                         " cmdCancel chkStopRecordOnDigit cmdPlay"
                            << "Label2=Max Recording Time  :|Label2_1=Sec"
                               "|chkStopRecordOnDigit=Stop recording on digit press"
                               "|chkPlayBeep=Play Beep After message";
    QTest::newRow("transfer") << qint16(6) << QSize(370, 297)
                              << prompt + " cmdPlay txtTTS txtExtNo cmdOk cmdCancel"
                              << "Label1=Extension number|lblWaveFile=Sound File|cmdBrowse=...";
}

void tst_MenuDialogs::layoutAsDrawn()
{
    QFETCH(qint16, type);
    QFETCH(QSize, client);
    QFETCH(QString, tabOrder);
    QFETCH(QString, captions);
    frmScriptViewer w;
    addModules(w, type);
    ivr::PropertyDialog *dialog = open(w, 2);
    QCOMPARE(dialog->size(), client);
    QCOMPARE(dialog->minimumSize(), client);
    QCOMPARE(dialog->maximumSize(), client);
    const QStringList order = tabOrder.split(' ');
    QCOMPARE(dialogtesting::tabOrder(dialog, order), order);
    const QStringList pairs = captions.split('|');
    QCOMPARE(dialogtesting::captions(dialog, pairs), pairs);
    const QRegularExpression wideBlank(QStringLiteral("\\S {3,}\\S"));
    for (QLabel *label : dialog->findChildren<QLabel *>())
        QVERIFY2(!wideBlank.match(label->text()).hasMatch(), qPrintable(label->text()));
    click(dialog, "cmdCancel");
}

QTEST_MAIN(tst_MenuDialogs)
#include "tst_menudialogs.moc"
