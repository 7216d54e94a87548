#include "dialogtesting.h"
#include "selectedmoduletype.h"
#include "spinbox.h"

#include <QPointer>

using namespace dialogtesting;

// The contract every dialog keeps, worked mostly through the Play dialog of a
// real script window: the name check, the commit of exits and names, OK and
// Cancel, and a completion that comes once; then the rules of single dialogs.
class tst_PropertyDialog : public QObject, private Fixture
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(setUp()); }
    void cleanup() { tearDown(); }
    void nameCheck_data();
    void nameCheck();
    void renameReachesOnlyLinkedExits();
    void exitListsLeaveConnectedOut();
    void cancelClearsChanged();
    void ends_data();
    void ends();
    void secondPropertyOpensNothing();
    void promptOptionsEnable();
    void spinArrowsStayInRange();
    void connectDecidesAtOk_data();
    void connectDecidesAtOk();
    void browse_data();
    void browse();
    void endOnlyEnablesWindow();
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

void tst_PropertyDialog::nameCheck_data()
{
    QTest::addColumn<int>("type");      // of module 2, the one edited
    QTest::addColumn<QString>("names"); // of modules 2.. split by "|" ("" leaves a hole)
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("said");
    row("blanks-only-invalid", 3, "A", "   ", "Invalid Name");
    row("reserved-invalid", 3, "A", "Common", "Invalid Name");
    row("reserved-with-blanks-invalid", 3, "A", " Common ", "Invalid Name");
    row("reserved-other-case-allowed", 3, "A", "common", "");
    row("other-module-name-duplicate", 3, "A|B", "B", "Duplicate Name");
    row("fixed-module-name-duplicate", 3, "A", "End Call", "Duplicate Name");
    row("other-case-not-duplicate", 3, "A|B", "b", "");
    row("trailing-blank-not-duplicate", 3, "A|B", "B ", "");
    row("unchanged-name-passes-beside-twin", 3, "A|A", "A", "");
    // A gap at 3 doubles the scan to 6: 4 and 5 go unchecked.
    row("duplicate-after-gap-unchecked", 3, "A||C|D|E", "D", "");
    row("duplicate-at-doubled-position-found", 3, "A||C|D|E", "E", "Duplicate Name");
    row("condition-blank-name-passed", 13, "A", "  ", "Invalid Name");
    row("email-duplicate-passed", 9, "A|B", "B", "Duplicate Name");
    row("query-reserved-passed", 8, "A", "Common", "Invalid Name");
    row("executable-duplicate-passed", 11, "A", "End Call", "Duplicate Name");
}

void tst_PropertyDialog::nameCheck()
{
    QFETCH(int, type);
    QFETCH(QString, names);
    QFETCH(QString, typed);
    QFETCH(QString, said);
    const QStringList modules = names.split('|');
    frmScriptViewer w;
    for (const QString &name : modules) {
        w.AddModule(qint16(w.cmVorelModule().ubound() < 2 ? type : 3), 3000, 3000);
        module(w, w.cmVorelModule().ubound())->moduleData()->setName(name);
    }
    for (int i = 0; i < modules.size(); ++i) {
        if (modules.at(i).isEmpty()) {
            m_messages->answer(QMessageBox::Yes);
            w.RemoveModule(qint16(2 + i));
        }
    }
    m_messages->clear();
    const QJsonObject before = definitionOf(w, 2).storedValues();
    ivr::PropertyDialog *dialog = open(w, 2);
    enter(dialog, "txtModuleName", typed);
    enter(dialog, type == 3 ? "cboNext" : "cboSuccess", "End Call");
    click(dialog, "cmdOk");
    if (said.isEmpty()) {
        QCOMPARE(m_messages->count(), 0);
        QCOMPARE(module(w, 2)->moduleData()->Name(), typed); // blanks kept
        QVERIFY(w.isEnabled());
        return;
    }
    QCOMPARE(m_messages->count(), 1);
    QCOMPARE(m_messages->lastText(), said);
    QCOMPARE(m_messages->messages().last().icon, QMessageBox::Critical);
    QCOMPARE(m_messages->messages().last().buttons, QMessageBox::Ok);
    QVERIFY(dialog->isVisible()); // stays with what was typed
    QCOMPARE(shownIn(dialog, "txtModuleName"), typed);
    QCOMPARE(module(w, 2)->moduleData()->Name(), modules.first());
    QCOMPARE(definitionOf(w, 2).storedValues(), before);
    click(dialog, "cmdCancel");
}

void tst_PropertyDialog::renameReachesOnlyLinkedExits()
{
    frmScriptViewer w;
    w.AddModule(3, 3000, 3000); // 2, renamed below
    w.AddModule(3, 6000, 3000); // 3: names 2 in its exit but has no arrow to it
    module(w, 3)->moduleData()->definition().setNextModule(QStringLiteral("[2]"));
    ivr::PropertyDialog *connected = open(w, 0);
    enter(connected, "cboCurrModule", "2");
    click(connected, "cmdOk");
    QCOMPARE(definitionOf(w, 0).value("NextModule").toString(), QStringLiteral("[2]"));

    ivr::PropertyDialog *dialog = open(w, 2);
    control<QLineEdit>(dialog, "txtModuleName")->setText(QStringLiteral("Welcome"));
    enter(dialog, "cboNext", "End Call");
    click(dialog, "cmdOk");
    QCOMPARE(module(w, 2)->Caption(), QStringLiteral("Welcome"));
    QCOMPARE(definitionOf(w, 0).value("NextModule").toString(), QStringLiteral("[Welcome]"));
    QCOMPARE(definitionOf(w, 3).value("NextModule").toString(),
             QStringLiteral("[2]")); // stale, no arrow: untouched
    QCOMPARE(definitionOf(w, 2).value("NextModule").toString(), QStringLiteral("[End Call]"));
    const qint16 arrow = w.DrawLine().LineMatrix(2, 1);
    QVERIFY(arrow > 1);
    QVERIFY(w.VorelDirection1().at(arrow)->isVisible());
    QVERIFY(w.Changed());
}

void tst_PropertyDialog::exitListsLeaveConnectedOut()
{
    frmScriptViewer w;
    for (int i = 0; i < 4; ++i)
        w.AddModule(3, 3000, 3000);
    module(w, 3)->setCaption(QStringLiteral(" Spaced ")); // offered trimmed
    module(w, 4)->setCaption(QStringLiteral("Twin"));
    module(w, 5)->setCaption(QStringLiteral("Twin"));
    m_messages->answer(QMessageBox::Yes);
    w.RemoveModule(4);          // a gap is passed over
    w.AddModule(4, 3000, 3000); // back into 4, named "4"
    module(w, 4)->setCaption(QStringLiteral("Twin"));
    module(w, 2)->moduleData()->definition().setNextModule(QStringLiteral("[Twin]"));
    ivr::PropertyDialog *dialog = open(w, 2);
    auto *next = control<QComboBox>(dialog, "cboNext");
    QCOMPARE(items(next), (QStringList{"End Call", "2", "Spaced", "Twin", "Twin"}));
    for (int i = 0; i < next->count(); ++i) // each row leads to its own module
        QCOMPARE(next->itemData(i).toInt(), i + 1);
    QCOMPARE(next->currentIndex(), 4); // the last of two equal names
    click(dialog, "cmdCancel");
    // " Spaced " is offered as "Spaced", so its exit no longer matches.
    module(w, 2)->moduleData()->definition().setNextModule(QStringLiteral("[Spaced]"));
    dialog = open(w, 2);
    QCOMPARE(control<QComboBox>(dialog, "cboNext")->currentIndex(), -1);
    click(dialog, "cmdCancel");
}

void tst_PropertyDialog::cancelClearsChanged()
{
    frmScriptViewer w;
    ivr::setSelectedModuleType(3);
    QTest::mouseRelease(w.picMain(), Qt::LeftButton, {}, QPoint(200, 200));
    ivr::setSelectedModuleType(0);
    QVERIFY(w.Changed());
    ivr::PropertyDialog *dialog = open(w, 2);
    QVERIFY(!w.isEnabled());
    QVERIFY(dialog->isEnabled());
    enter(dialog, "cboNext", "End Call");
    control<QLineEdit>(dialog, "txtModuleName")->setText("Typed");
    click(dialog, "cmdCancel");
    QVERIFY(w.isEnabled());
    QVERIFY(!w.Changed()); // Changed := Edited, even after the placing before
    QCOMPARE(module(w, 2)->moduleData()->Name(), QStringLiteral("2"));
    QCOMPARE(w.DrawLine().LineMatrix(2, 1), qint16(0));
}

void tst_PropertyDialog::ends_data()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<bool>("ends"); // with one completion, never a second
    row("enter-on-ok-button-ends", "enter-ok", false);
    row("enter-in-name-box-ends", "enter", false);
    row("escape-ends", "escape", false);
    row("dialog-close-ends", "dialog-close", false);
    row("ok-completes-twice", "ok", true);
    row("cancel-completes-twice", "cancel", true);
    row("window-close-leaves-dialog", "close", true);
    row("window-gone-leaves-dialog", "destroy", true);
}

void tst_PropertyDialog::ends()
{
    QFETCH(QString, how);
    QFETCH(bool, ends);
    auto w = std::make_unique<frmScriptViewer>();
    w->AddModule(3, 3000, 3000);
    ivr::PropertyDialog *dialog = open(*w, 2);
    QPointer<ivr::PropertyDialog> alive(dialog);
    QSignalSpy completed(dialog, &ivr::PropertyDialog::CompleteEdit);
    enter(dialog, "txtModuleName", "Edited");
    m_messages->answer(QMessageBox::No); // the close question of the placed module
    if (how == "enter-ok")
        QTest::keyClick(control(dialog, "cmdOk"), Qt::Key_Return);
    else if (how == "enter")
        QTest::keyClick(control(dialog, "txtModuleName"), Qt::Key_Return);
    else if (how == "escape")
        QTest::keyClick(dialog, Qt::Key_Escape);
    else if (how == "dialog-close")
        QVERIFY(!dialog->close());
    else if (how == "ok" || how == "cancel")
        click(dialog, how == "ok" ? "cmdOk" : "cmdCancel");
    else if (how == "close")
        QVERIFY(w->close() && !w->isEnabled() && !w->Changed()); // the end did not reach it
    else
        w.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(completed.size(), ends ? 1 : 0);
    QCOMPARE(alive.isNull(), ends);
    if (!ends) {
        QVERIFY(!w->isEnabled());
        click(dialog, "cmdCancel");
    }
    w.reset();
    QCOMPARE(completed.size(), 1);
}

void tst_PropertyDialog::secondPropertyOpensNothing()
{
    frmScriptViewer w;
    w.show();
    w.AddModule(3, 3000, 3000);
    ivr::PropertyDialog *dialog = open(w, 2);
    QVERIFY(dialog);
    module(w, 2)->setFocus();
    w.ShowProperty();
    w.ShowPropertyDialog();
    QCOMPARE(open(w, 1), nullptr);
    m_messages->answer(QMessageBox::Yes);
    w.DeleteModule(); // Delete waits as well
    QVERIFY(w.cmVorelModule().exists(2));
    const QWidgetList tops = QApplication::topLevelWidgets();
    const auto shownDialog = [](QWidget *t) {
        return qobject_cast<ivr::PropertyDialog *>(t) && t->isVisible();
    };
    QCOMPARE(std::count_if(tops.begin(), tops.end(), shownDialog), 1);
    click(dialog, "cmdCancel");
}

void tst_PropertyDialog::promptOptionsEnable()
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

void tst_PropertyDialog::spinArrowsStayInRange()
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

void tst_PropertyDialog::connectDecidesAtOk_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("choices"); // split by "|"
    QTest::addColumn<QString>("written");
    QTest::addColumn<bool>("changed");
    row("new-choice-written", "[End Call]", "2", "[2]", true);
    row("changed-back-is-no-change", "[End Call]", "2|End Call", "[End Call]", false);
    row("stale-target-kept-without-choice", "[Gone]", "", "[Gone]", false);
    row("stale-target-replaced-by-choice", "[Gone]", "2", "[2]", true);
}

void tst_PropertyDialog::connectDecidesAtOk()
{
    QFETCH(QString, stored);
    QFETCH(QString, choices);
    QFETCH(QString, written);
    QFETCH(bool, changed);
    frmScriptViewer w;
    w.AddModule(3, 3000, 3000);
    definitionOf(w, 0).setNextModule(stored);
    ivr::PropertyDialog *dialog = open(w, 0);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Connected"));
    QCOMPARE(control<QComboBox>(dialog, "cboCurrModule")->count(), 2); // never Connected
    for (const QString &choice : pairs(choices))
        enter(dialog, "cboCurrModule", choice);
    click(dialog, "cmdOk");
    QCOMPARE(definitionOf(w, 0).value("NextModule").toString(), written);
    QCOMPARE(w.Changed(), changed);
    if (changed) {
        const qint16 arrow = w.DrawLine().LineMatrix(0, 2);
        QVERIFY(arrow > 0 && w.VorelDirection1().at(arrow)->isVisible());
        QCOMPARE(w.DrawLine().LineMatrix(0, 1), qint16(0));
    }
}

void tst_PropertyDialog::endOnlyEnablesWindow()
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

void tst_PropertyDialog::browse_data()
{
    QTest::addColumn<int>("type");         // End Call 0 at 1, or a module at 2
    QTest::addColumn<QString>("playPick"); // picked in Play first, "" for no use
    QTest::addColumn<QString>("answer");   // "" cancels
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("asked"); // title|filter|name filters|name|flags|filter index
    const char *wav
            = "Select Wav File|Wav Files (*.wav)|*.wav|Wav Files (*.wav);All Files (*)||81000|1";
    // Title and name as Play left them; the filter of its own, "*.exe" widened.
    const char *exe = "|Application (*.exe)|*.exe|Application (*.exe);All Files (*)||81000|1";
    const char *exeAfterPlay = "Select Wav File|Application (*.exe)|*.exe|Application (*.exe);All "
                               "Files (*)|/a.wav|81000|1";
    const char *attachment = "|All Files (*.*)|*.*|All Files (*)||81000|1";
    const char *attachmentAfterPlay
            = "Select Wav File|All Files (*.*)|*.*|All Files (*)|/a.wav|81000|1";
    row("end-same-file-leaves-clean", 0, "", "/a.wav", "/a.wav", "/a.wav", wav);
    row("end-other-file-lost", 0, "", "/b.wav", "/a.wav", "/b.wav", wav);
    row("end-cancel-over-empty-edits", 0, "", "", "", "", wav);
    row("end-cancel-keeps-filled-box", 0, "", "", "/a.wav", "", wav);
    row("program-choice-lost", 11, "", "/bin/env", "", "/bin/env", exe);
    row("program-cancel-drops-last-name", 11, "/a.wav", "", "/bin/a", "/a.wav", exeAfterPlay);
    row("email-cancel-drops-last-name", 9, "/a.wav", "", "", "/a.wav", attachmentAfterPlay);
    row("email-first-cancel-leaves-old-text", 9, "", "", "/old.pdf", "", attachment);
    row("email-choice-lost", 9, "/a.wav", "/b.pdf", "", "/b.pdf", attachmentAfterPlay);
}

// The picker's answer reaches the box, the stored value and the edit mark.
void tst_PropertyDialog::browse()
{
    QFETCH(int, type);
    QFETCH(QString, playPick);
    QFETCH(QString, answer);
    QFETCH(QString, before);
    QFETCH(QString, after);
    QFETCH(QString, asked);
    const QString key = type == 9 ? "Attachment" : "FileName";
    const qint16 at = type == 0 ? 1 : 2;
    frmScriptViewer w;
    addModules(w, qint16(type == 0 ? 3 : type));
    definitionOf(w, at).setisTextMsg(false);
    definitionOf(w, at).setValue(key, before);
    answerPicker();
    if (!playPick.isEmpty()) {
        m_give = playPick;
        ivr::PropertyDialog *play = open(w, 3);
        control<QRadioButton>(play, "optTTS_1")->click();
        click(play, "cmdBrowse");
        click(play, "cmdCancel");
    }
    m_give = answer;
    ivr::PropertyDialog *dialog = open(w, at);
    QSignalSpy completed(dialog, &ivr::PropertyDialog::CompleteEdit);
    click(dialog, "cmdBrowse");
    QCOMPARE(m_seen.join('|'), asked);
    QCOMPARE(shownIn(dialog,
                     type == 9 ? "txtAttachment"
                     : type    ? "TxtFileName"
                               : "txtWaveFile"),
             after);
    click(dialog, "cmdOk");
    QCOMPARE(completed.first().at(1).toBool(), before != after);
    QCOMPARE(definitionOf(w, at).value(key).toString(), after);
}

void tst_PropertyDialog::lengthAfterName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<double>("least");
    QTest::addColumn<double>("greatest");
    QTest::addColumn<QString>("said"); // at the first OK, and at a second with the name mended
    const char *length = "Minimum length of digit is greater then maximum length";
    const QByteArray nameThenLength = "Invalid Name|" + QByteArray(length);
    row("equal-lengths-refused", "N", 5.0, 5.0, "");
    row("greatest-below-least-passed", "N", 5.0, 4.0, length);
    row("length-before-name", "", 5.0, 4.0, nameThenLength.constData());
    row("name-message-missing", " ", 5.0, 6.0, "Invalid Name");
    row("unchecked-without-edit", "2", 9.0, 3.0, length);
}

void tst_PropertyDialog::lengthAfterName()
{
    QFETCH(QString, name);
    QFETCH(double, least);
    QFETCH(double, greatest);
    QFETCH(QString, said);
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
    if (m_messages->count() == 1 && said.contains('|')) {
        nameBox->setText(QStringLiteral("Mended"));
        click(dialog, "cmdOk");
    }
    QStringList texts;
    for (const ivr::MsgBox::Message &m : m_messages->messages()) {
        texts << m.text;
        QCOMPARE(m.icon, QMessageBox::Critical);
        QCOMPARE(m.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    }
    QCOMPARE(texts, pairs(said));
    QCOMPARE(alive.isNull(), said.isEmpty()); // refused: the dialog stays
    if (alive) {
        QCOMPARE(definitionOf(w, 2).MinLength(), least); // nothing written
        click(dialog, "cmdCancel");                      // Cancel still closes
        QVERIFY(alive.isNull());
    }
}

// The digit menu and the number entry open on their Play page each time;
// OK and Cancel stand outside both pages.
void tst_PropertyDialog::opensOnPlay()
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

QTEST_MAIN(tst_PropertyDialog)
#include "tst_propertydialog.moc"
