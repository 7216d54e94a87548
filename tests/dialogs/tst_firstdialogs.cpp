#include "dialogtesting.h"
#include "spinbox.h"

#include <QLabel>

using namespace dialogtesting;

// Play, Connected and End Call: their fields, their commits and their quirks.
class tst_FirstDialogs : public QObject, private Fixture
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(setUp()); }
    void cleanup() { tearDown(); }
    void playLoadsAndCommits();
    void playMarksEdited_data();
    void playMarksEdited();
    void spinHoldsStoredValue_data();
    void spinHoldsStoredValue();
    void promptOptionsEnable();
    void connectDecidesAtOk_data();
    void connectDecidesAtOk();
    void endBrowse_data();
    void endBrowse();
    void endOnlyEnablesWindow();
    void layoutAsDrawn_data();
    void layoutAsDrawn();

private:
    void answerPicker(std::optional<QString> name)
    {
        ivr::CommonDialog::setTestAnswer(
                [this, name](const ivr::CommonDialog &d, ivr::CommonDialog::Mode) {
                    m_pickerSeen = d.DialogTitle + '|' + d.Filter + '|' + d.FileName + '|'
                                   + QString::number(d.Flags, 16);
                    return name;
                });
    }

    QString m_pickerSeen;
};

void tst_FirstDialogs::playLoadsAndCommits()
{
    frmScriptViewer w;
    w.AddModule(3, 3000, 3000);
    ivr::Definition &d = module(w, 2)->moduleData()->definition();
    d.setisTextMsg(false);
    d.setTextToPlay(QStringLiteral("Hello"));
    d.setFileName(QStringLiteral("/srv/greeting.wav"));
    d.setReplayCount(4);
    d.setPauseBetn(7);
    ivr::PropertyDialog *dialog = open(w, 2);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("2"));
    QVERIFY(control<QRadioButton>(dialog, "optTTS_1")->isChecked());
    QCOMPARE(control<QPlainTextEdit>(dialog, "txtTTS")->toPlainText(), QStringLiteral("Hello"));
    QCOMPARE(control<QLineEdit>(dialog, "txtWaveFile")->text(),
             QStringLiteral("/srv/greeting.wav"));
    QCOMPARE(control<QDoubleSpinBox>(dialog, "txtReplayCount")->value(), 4.0);
    QCOMPARE(control<QDoubleSpinBox>(dialog, "txtPauseBetn")->value(), 7.0);

    control<QRadioButton>(dialog, "optTTS_0")->click();
    control<QPlainTextEdit>(dialog, "txtTTS")->setPlainText(QStringLiteral(" Welcome "));
    control<QDoubleSpinBox>(dialog, "txtReplayCount")->setValue(2);
    control<QDoubleSpinBox>(dialog, "txtPauseBetn")->setValue(3);
    choose(dialog, "cboNext", "End Call");
    click(dialog, "cmdOk");
    QVERIFY(d.isTextMsg());
    QCOMPARE(d.TextToPlay(), QStringLiteral(" Welcome "));       // untrimmed
    QCOMPARE(d.FileName(), QStringLiteral("/srv/greeting.wav")); // kept though unused
    QCOMPARE(d.ReplayCount(), 2.0);
    QCOMPARE(d.PauseBetn(), 3.0);
    QCOMPARE(d.NextModule(), QStringLiteral("[End Call]"));
}

void tst_FirstDialogs::playMarksEdited_data()
{
    QTest::addColumn<QString>("control");
    for (const char *name : {"txtModuleName",
                             "txtTTS",
                             "txtWaveFile",
                             "txtReplayCount",
                             "txtPauseBetn",
                             "cboNext",
                             "optTTS_1"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_FirstDialogs::playMarksEdited()
{
    QFETCH(QString, control);
    frmScriptViewer w;
    w.AddModule(3, 3000, 3000);
    ivr::PropertyDialog *dialog = open(w, 2);
    edit(dialog->findChild<QWidget *>(control));
    click(dialog, "cmdOk");
    QVERIFY(w.Changed());
}

void tst_FirstDialogs::spinHoldsStoredValue_data()
{
    QTest::addColumn<double>("stored");
    QTest::newRow("above-range-kept") << 75.0;
    QTest::newRow("below-range-kept") << 0.0;
    QTest::newRow("fraction-kept") << 2.5;
}

void tst_FirstDialogs::spinHoldsStoredValue()
{
    QFETCH(double, stored);
    frmScriptViewer w;
    w.AddModule(3, 3000, 3000);
    ivr::Definition &d = module(w, 2)->moduleData()->definition();
    d.setPauseBetn(stored);
    ivr::PropertyDialog *dialog = open(w, 2);
    auto *spin = control<ivr::SpinBox>(dialog, "txtPauseBetn");
    QCOMPARE(spin->value(), stored);
    control<QLineEdit>(dialog, "txtModuleName")->setText(QStringLiteral("Edited"));
    click(dialog, "cmdOk");
    QCOMPARE(d.PauseBetn(), stored);
    // The arrows step within 1..60 whatever the value held.
    dialog = open(w, 2);
    spin = control<ivr::SpinBox>(dialog, "txtPauseBetn");
    spin->stepBy(1);
    QVERIFY(spin->value() >= 1 && spin->value() <= 60);
    click(dialog, "cmdCancel");
}

void tst_FirstDialogs::promptOptionsEnable()
{
    frmScriptViewer w;
    w.AddModule(3, 3000, 3000);
    ivr::PropertyDialog *dialog = open(w, 2); // a new module speaks text
    const auto enabled = [dialog](const char *name) {
        return control(dialog, name)->isEnabled();
    };
    QVERIFY(enabled("txtTTS") && enabled("lblTTS"));
    QVERIFY(!enabled("txtWaveFile") && !enabled("cmdBrowse") && !enabled("lblWaveFile"));
    QVERIFY(enabled("cmdPlay"));
    control<QRadioButton>(dialog, "optTTS_1")->click();
    QVERIFY(!enabled("txtTTS") && !enabled("lblTTS"));
    QVERIFY(enabled("txtWaveFile") && enabled("cmdBrowse") && enabled("lblWaveFile"));
    click(dialog, "cmdCancel");
}

void tst_FirstDialogs::connectDecidesAtOk_data()
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

void tst_FirstDialogs::connectDecidesAtOk()
{
    QFETCH(QString, stored);
    QFETCH(QStringList, choices);
    QFETCH(QString, written);
    QFETCH(bool, changed);
    frmScriptViewer w;
    w.AddModule(3, 3000, 3000);
    module(w, 0)->moduleData()->definition().setNextModule(stored);
    ivr::PropertyDialog *dialog = open(w, 0);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Connected"));
    auto *combo = control<QComboBox>(dialog, "cboCurrModule");
    QCOMPARE(combo->count(), 2); // End Call and 2, never Connected
    for (const QString &choice : choices)
        choose(dialog, "cboCurrModule", choice);
    click(dialog, "cmdOk");
    QCOMPARE(exitOf(w, 0, "NextModule"), written);
    QCOMPARE(w.Changed(), changed);
    if (changed) {
        const qint16 arrow = w.DrawLine().LineMatrix(0, 2);
        QVERIFY(arrow > 0 && w.VorelDirection1().at(arrow)->isVisible());
        QCOMPARE(w.DrawLine().LineMatrix(0, 1), qint16(0));
    }
}

void tst_FirstDialogs::endBrowse_data()
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

void tst_FirstDialogs::endBrowse()
{
    QFETCH(QString, before);
    QFETCH(QString, picked);
    QFETCH(QString, after);
    QFETCH(bool, edited);
    frmScriptViewer w;
    ivr::Definition &d = module(w, 1)->moduleData()->definition();
    d.setisTextMsg(false);
    d.setFileName(before);
    answerPicker(picked.isEmpty() ? std::nullopt : std::optional<QString>(picked));
    ivr::PropertyDialog *dialog = open(w, 1);
    QSignalSpy completed(dialog, &ivr::PropertyDialog::CompleteEdit);
    click(dialog, "cmdBrowse");
    QCOMPARE(m_pickerSeen, QStringLiteral("Select Wav File|Wav Files (*.wav)|*.wav||81000"));
    QCOMPARE(control<QLineEdit>(dialog, "txtWaveFile")->text(), after);
    click(dialog, "cmdOk");
    QCOMPARE(completed.first().at(1).toBool(), edited);
    QCOMPARE(d.FileName(), after);
}

void tst_FirstDialogs::endOnlyEnablesWindow()
{
    frmScriptViewer w;
    ivr::PropertyDialog *dialog = open(w, 1);
    QVERIFY(!control(dialog, "txtModuleName"));
    control<QPlainTextEdit>(dialog, "txtTTS")->setPlainText(QStringLiteral("Goodbye"));
    click(dialog, "cmdOk");
    QVERIFY(w.isEnabled());
    QVERIFY(!w.Changed()); // its end neither marks nor clears the script
    QCOMPARE(module(w, 1)->moduleData()->definition().TextToPlay(), QStringLiteral("Goodbye"));
    QCOMPARE(module(w, 1)->moduleData()->Name(), QStringLiteral("End Call"));
    QCOMPARE(w.DrawLine().LineMatrix(0, 1) > 0, true); // the first link stands
}

void tst_FirstDialogs::layoutAsDrawn_data()
{
    QTest::addColumn<qint16>("module");
    QTest::addColumn<QSize>("client");
    QTest::addColumn<QStringList>("tabOrder");
    QTest::addColumn<QStringList>("captions"); // name=text
    QTest::newRow("play") << qint16(2) << QSize(371, 347)
                          << QStringList{"txtModuleName",
                                         "optTTS_0",
                                         "optTTS_1",
                                         "txtWaveFile",
                                         "cmdBrowse",
                                         "txtTTS",
                                         "txtReplayCount",
                                         "txtPauseBetn",
                                         "cboNext",
                                         "cmdOk",
                                         "cmdCancel",
                                         "cmdPlay"}
                          << QStringList{"optTTS_0=Text To Speech",
                                         "optTTS_1=Wave File",
                                         "lblWaveFile=Sound File",
                                         "lblTTS=Text To Speech",
                                         "cmdBrowse=...",
                                         "cmdPlay=&Play",
                                         "Label2=Replay Count",
                                         "Label2_1=Pause between replay",
                                         "Label2_2=Sec",
                                         "Label1=On complete goto",
                                         "cmdOk=&Ok",
                                         "cmdCancel=&Cancel"};
    QTest::newRow("connect") << qint16(0) << QSize(307, 74)
                             << QStringList{"cboCurrModule", "cmdOk", "cmdCancel"}
                             << QStringList{
                                        "Label1=On connect goto", "cmdOk=&Ok", "cmdCancel=&Cancel"};
    QTest::newRow("end") << qint16(1) << QSize(370, 212)
                         << QStringList{"optTTS_0",
                                        "optTTS_1",
                                        "txtWaveFile",
                                        "cmdBrowse",
                                        "cmdPlay",
                                        "txtTTS",
                                        "cmdOk",
                                        "cmdCancel"}
                         << QStringList{"optTTS_0=Text To Speech", "cmdOk=&Ok"};
}

void tst_FirstDialogs::layoutAsDrawn()
{
    QFETCH(qint16, module);
    QFETCH(QSize, client);
    QFETCH(QStringList, tabOrder);
    QFETCH(QStringList, captions);
    frmScriptViewer w;
    w.AddModule(3, 3000, 3000);
    ivr::PropertyDialog *dialog = open(w, module);
    QCOMPARE(dialog->size(), client);
    QCOMPARE(dialog->minimumSize(), client);
    QCOMPARE(dialog->maximumSize(), client);
    QVERIFY(!(dialog->windowFlags()
              & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint
                 | Qt::WindowCloseButtonHint)));
    // Qt keeps only the checked option of a group in the chain's tab stops;
    // the chain itself is the order drawn.
    QCOMPARE(dialogtesting::tabOrder(dialog, tabOrder), tabOrder);
    QCOMPARE(dialogtesting::captions(dialog, captions), captions);
    for (QPushButton *button : dialog->findChildren<QPushButton *>())
        QVERIFY(!button->isDefault() && !button->autoDefault());
    click(dialog, "cmdCancel");
}

QTEST_MAIN(tst_FirstDialogs)
#include "tst_firstdialogs.moc"
