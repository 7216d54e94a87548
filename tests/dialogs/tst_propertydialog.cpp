#include "dialogtesting.h"
#include "selectedmoduletype.h"

using namespace dialogtesting;

// The contract every dialog keeps, worked mostly through the Play dialog of a
// real script window: the name check, the commit of exits and names, OK and
// Cancel, and a completion that comes once.
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

QTEST_MAIN(tst_PropertyDialog)
#include "tst_propertydialog.moc"
