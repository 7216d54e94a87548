#include "frmscriptviewer.h"

#include "commondialog.h"
#include "messagerecorder.h"
#include "programfolder.h"
#include "scriptfile.h"
#include "voreldirection.h"
#include "vorelmodule.h"

#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTest>

#include <memory>

// The script window's open, save and run, on real files.
class tst_frmScriptViewerFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void roundTripKeepsEverything();
    void reopenPacksIndices();
    void reopenRebuildsOnlyItsExits_data();
    void reopenRebuildsOnlyItsExits();
    void damagedFileKeepsCanvas();
    void saveNameAndCaption_data();
    void saveNameAndCaption();
    void saveWhereLibraryCannotWrite_data();
    void saveWhereLibraryCannotWrite();
    void run_data();
    void run();
    void killedSaveLeavesLoadableFile();

private:
    QString fixture() const { return QStringLiteral(IVR_TEST_DATA "/every_type.ivr"); }
    QHash<QString, qint16> indices(frmScriptViewer &w); // name -> index
    void answerSave(const std::optional<QString> &name);

    std::unique_ptr<ProgramFolder> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
    QString m_proposed;
};

void tst_frmScriptViewerFile::init()
{
    m_folder = std::make_unique<ProgramFolder>();
    QVERIFY(m_folder->isValid());
    m_messages = std::make_unique<MessageRecorder>();
    m_proposed.clear();
}

void tst_frmScriptViewerFile::cleanup()
{
    ivr::CommonDialog::clearTestAnswer();
    m_messages.reset();
    m_folder.reset();
}

QHash<QString, qint16> tst_frmScriptViewerFile::indices(frmScriptViewer &w)
{
    QHash<QString, qint16> result;
    for (auto it = w.cmVorelModule().begin(); it != w.cmVorelModule().end(); ++it)
        result.insert((*it)->moduleData()->Name(), it.index());
    return result;
}

void tst_frmScriptViewerFile::answerSave(const std::optional<QString> &name)
{
    ivr::CommonDialog::setTestAnswer([this, name](const ivr::CommonDialog &dialog,
                                                  ivr::CommonDialog::Mode mode) {
        m_proposed = dialog.FileName;
        if (mode != ivr::CommonDialog::Mode::Save || dialog.DialogTitle != "Save"
            || dialog.Flags != 18 || dialog.Filter != "Brindlewave IVR Script (*.ivr) |*.ivr")
            m_proposed = QStringLiteral("<wrong dialog>");
        return name;
    });
}

void tst_frmScriptViewerFile::roundTripKeepsEverything()
{
    const QString saved = m_folder->file(QStringLiteral("round trip.ivr"));
    {
        frmScriptViewer w;
        w.OpenScript(fixture());
        w.setFileName(saved);
        QVERIFY(w.SaveScript(false));
        QVERIFY(w.close());
    }
    frmScriptViewer first;
    first.OpenScript(fixture());
    frmScriptViewer second;
    second.OpenScript(saved);
    QCOMPARE(m_messages->count(), 0);
    QCOMPARE(second.windowTitle(), saved);

    const auto a = indices(first);
    const auto b = indices(second);
    QCOMPARE(b.size(), 14);
    QCOMPARE(QSet<QString>(b.keyBegin(), b.keyEnd()), QSet<QString>(a.keyBegin(), a.keyEnd()));
    for (auto it = a.begin(); it != a.end(); ++it) {
        VorelModule *x = first.cmVorelModule().at(it.value());
        VorelModule *y = second.cmVorelModule().at(b.value(it.key()));
        QCOMPARE(y->ModuleType(), x->ModuleType());
        QCOMPARE(y->Left(), x->Left());
        QCOMPARE(y->Top(), x->Top());
        QCOMPARE(y->Description(), x->Description());
        QCOMPARE(y->moduleData()->definition().storedValues(),
                 x->moduleData()->definition().storedValues());
        for (auto to = a.begin(); to != a.end(); ++to) {
            const qint16 cell = second.DrawLine().LineMatrix(b.value(it.key()), b.value(to.key()));
            QCOMPARE(cell > 0, first.DrawLine().LineMatrix(it.value(), to.value()) > 0);
            QVERIFY(cell <= 0 || second.VorelDirection1().at(cell)->isVisibleTo(&second));
        }
    }
    QCOMPARE(first.cmVorelModule().at(a.value("Connected"))->Left(), 1215.5f);
    const ivr::Definition &c1 = first.CommonModule()->definition();
    const ivr::Definition &c2 = second.CommonModule()->definition();
    QCOMPARE(c2.BeepFileName(), QStringLiteral("/opt/ivr/Greeting/beep.wav"));
    for (int i = 0; i < ivr::Definition::FileNameSlots; ++i)
        QCOMPARE(c2.FileName(i), c1.FileName(i));
    for (int i = 0; i < ivr::Definition::MonthFileSlots; ++i)
        QCOMPARE(c2.MonthFile(i), c1.MonthFile(i));
    QCOMPARE(c2.scriptNames(), c1.scriptNames());
    QCOMPARE(c2.scriptNames().size(), 2);
}

void tst_frmScriptViewerFile::reopenPacksIndices()
{
    const QString file = m_folder->file(QStringLiteral("holes.ivr"));
    {
        frmScriptViewer w;
        for (int i = 0; i < 4; ++i)
            w.AddModule(3, 3000 + 2000 * i, 3000);
        m_messages->answer(QMessageBox::Yes);
        w.RemoveModule(3);
        w.setFileName(file);
        QVERIFY(w.SaveScript(false));
    }
    frmScriptViewer w;
    w.OpenScript(file);
    QCOMPARE(w.cmVorelModule().indices(), (QList<qint16>{0, 1, 2, 3, 4}));
    const auto at = indices(w);
    QCOMPARE(at.value("4"), qint16(3));
    QCOMPARE(at.value("5"), qint16(4));
}

void tst_frmScriptViewerFile::reopenRebuildsOnlyItsExits_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<bool>("arrow");
    QTest::newRow("query-on-no-record-gets-no-arrow") << "Lookup"
                                                      << "Voicemail" << false;
    QTest::newRow("query-on-success-gets-arrow") << "Lookup"
                                                 << "Mail" << true;
}

void tst_frmScriptViewerFile::reopenRebuildsOnlyItsExits()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(bool, arrow);
    frmScriptViewer w;
    w.OpenScript(fixture());
    const auto at = indices(w);
    QCOMPARE(w.DrawLine().LineMatrix(at.value(from), at.value(to)) > 0, arrow);
}

void tst_frmScriptViewerFile::damagedFileKeepsCanvas()
{
    const QString file = m_folder->file(QStringLiteral("broken.ivr"));
    QFile f(file);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write("{ nope");
    f.close();
    frmScriptViewer w;
    w.OpenScript(file);
    QCOMPARE(m_messages->count(), 1);
    QCOMPARE(w.FileName(), file);
    QCOMPARE(w.windowTitle(), file);
    QCOMPARE(w.cmVorelModule().indices(), (QList<qint16>{0, 1}));
    QCOMPARE(w.DrawLine().LineMatrix(0, 1), qint16(1));
    QVERIFY(!w.Changed());
}

void tst_frmScriptViewerFile::saveNameAndCaption_data()
{
    QTest::addColumn<bool>("opened");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("proposed");
    QTest::addColumn<QString>("fileName");
    auto row = [](const char *name, auto... v) {
        (QTest::newRow(name) << ... << v);
    };
    const char *plain = "IVR Script 1.ivr";
    row("new-script-proposes-caption-and-suffix", false, "x", plain, "x.ivr");
    row("typed-suffix-not-doubled", false, "y.ivr", plain, "y.ivr");
    row("upper-case-suffix-doubled", false, "x.IVR", plain, "x.IVR.ivr");
    row("opened-script-proposes-suffix-twice", true, "z", "<opened>.ivr", "z.ivr");
    row("cancel-writes-nothing", false, "", plain, "");
}

void tst_frmScriptViewerFile::saveNameAndCaption()
{
    QFETCH(bool, opened);
    QFETCH(QString, typed);
    QFETCH(QString, proposed);
    QFETCH(QString, fileName);
    const QString dir = m_folder->path() + QLatin1Char('/');
    const QString source = dir + QStringLiteral("source.ivr");
    QVERIFY(QFile::copy(fixture(), source));
    answerSave(typed.isEmpty() ? std::nullopt : std::optional<QString>(dir + typed));

    frmScriptViewer w;
    w.setWindowTitle(QStringLiteral("IVR Script 1"));
    if (opened)
        w.OpenScript(source);
    w.AddModule(3, 100, 100);
    QCOMPARE(w.SaveScript(true), !fileName.isEmpty());
    QCOMPARE(m_proposed, proposed.replace(QStringLiteral("<opened>"), source));
    QCOMPARE(w.FileName(), fileName.isEmpty() ? QString() : dir + fileName);
    QCOMPARE(w.windowTitle(),
             fileName.isEmpty() ? QStringLiteral("IVR Script 1") : dir + fileName.chopped(4));
    QVERIFY(fileName.isEmpty() || QFile::exists(dir + fileName));
}

void tst_frmScriptViewerFile::saveWhereLibraryCannotWrite_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("parent-is-regular-file") << "source.ivr/inside.ivr";
    QTest::newRow("missing-folder") << "no such folder/inside.ivr";
    QTest::newRow("full-disk-keeps-old-file") << "source.ivr";
}

void tst_frmScriptViewerFile::saveWhereLibraryCannotWrite()
{
    QFETCH(QString, target);
    const QString dir = m_folder->path() + QLatin1Char('/');
    const QString source = dir + QStringLiteral("source.ivr");
    QVERIFY(QFile::copy(fixture(), source));
    QFile original(source);
    QVERIFY(original.open(QIODevice::ReadOnly));
    const QByteArray before = original.readAll();
    original.close();

    QProcess saver; // saves on a disk that takes 4 KiB per file
    saver.start(QStringLiteral(IVR_SCRIPT_SAVER), {dir + target, source});
    QVERIFY(saver.waitForFinished(60000));
    QCOMPARE(saver.exitCode(), 0);
    const QStringList seen
            = QString::fromLocal8Bit(saver.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    const QStringList expected{"changed before 1",
                               "ok 0",
                               "changed 0",
                               "file " + dir + target,
                               "caption " + dir + target.chopped(4),
                               "modules 114",
                               "closes without question 1"};
    QCOMPARE(seen.mid(0, 7), expected);
    QCOMPARE(seen.size(), 8); // one message
    QVERIFY2(seen.last().startsWith(QStringLiteral("message %1 ").arg(int(QMessageBox::Critical)))
                     && seen.last().contains(QFileInfo(target).fileName()),
             qPrintable(seen.last()));
    QVERIFY(original.open(QIODevice::ReadOnly));
    QCOMPARE(original.readAll(), before);
}

void tst_frmScriptViewerFile::run_data()
{
    QTest::addColumn<bool>("opened");
    QTest::addColumn<bool>("runner");
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("started");
    auto row = [](const char *name, auto... v) {
        (QTest::newRow(name) << ... << v);
    };
    const int no = QMessageBox::No, yes = QMessageBox::Yes;
    row("opened-unchanged-starts-without-question", true, true, 0, true);
    row("new-script-answered-no-starts-nothing", false, true, no, false);
    row("new-script-saved-then-started", false, true, yes, true);
    row("missing-runner-silent", true, false, 0, false);
}

void tst_frmScriptViewerFile::run()
{
    QFETCH(bool, opened);
    QFETCH(bool, runner);
    QFETCH(int, answer);
    QFETCH(bool, started);
    ProgramFolder::Options options;
    options.runner = runner;
    m_folder.reset(); // the old folder takes the application folder with it
    m_folder = std::make_unique<ProgramFolder>(options);
    answerSave(m_folder->file(QStringLiteral("run.ivr")));
    if (answer)
        m_messages->answer(QMessageBox::StandardButton(answer));
    frmScriptViewer w;
    if (opened)
        w.OpenScript(fixture());
    w.RunScript();

    QCOMPARE(m_messages->count(), opened ? 0 : 1);
    if (!opened) {
        const ivr::MsgBox::Message &m = m_messages->messages().first();
        QCOMPARE(m.text,
                 QStringLiteral("You must save the script before run.\nDo you want to save "
                                "it Now?"));
        QCOMPARE(m.icon, QMessageBox::Information);
        QCOMPARE(m.buttons, QMessageBox::Yes | QMessageBox::No);
    }
    const QString log = m_folder->file(QStringLiteral("VorelRun.log"));
    if (started) {
        QTRY_VERIFY(QFile::exists(log) && m_folder->runnerLog().size() == 2);
        QCOMPARE(m_folder->runnerLog(), (QStringList{m_folder->path(), "False"}));
    } else {
        QTest::qWait(300); // a detached start would have written by now
        QVERIFY(!QFile::exists(log));
    }
}

void tst_frmScriptViewerFile::killedSaveLeavesLoadableFile()
{
    const QString file = m_folder->file(QStringLiteral("killed.ivr"));
    for (int round = 0; round < 100; ++round) {
        QProcess saver;
        saver.start(QStringLiteral(IVR_SCRIPT_SAVER), {file});
        QVERIFY(saver.waitForReadyRead(30000)); // the first save stands
        QTest::qSleep(int(QRandomGenerator::global()->bounded(40)));
        saver.kill();
        QVERIFY(saver.waitForFinished());

        const auto list = ivr::ScriptFile().Load(file);
        QVERIFY2(list, qPrintable(QStringLiteral("round %1").arg(round)));
        // Every module of one save carries the same description.
        QSet<QString> descriptions;
        for (const auto &m : *list) {
            if (m->ModuleType() != 98)
                descriptions.insert(m->definition().Description());
        }
        QCOMPARE(descriptions.size(), 1);
        QCOMPARE(list->count(), 403);
    }
    QCOMPARE(m_messages->count(), 0);
}

QTEST_MAIN(tst_frmScriptViewerFile)
#include "tst_frmscriptviewerfile.moc"
